#pragma once

/// A progress bar on standard error; prints nothing if that is no terminal.
class ProgressBar
{
public:
    explicit ProgressBar(int total);

    /// Erases the bar.
    ~ProgressBar();
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    void show(int done) const;

private:
    const int total;
    const bool visible;
};
