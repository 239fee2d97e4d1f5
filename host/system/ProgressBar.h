#pragma once

/// A progress bar on standard error; silent where that is no terminal.
class ProgressBar
{
public:
    explicit ProgressBar(int total);

    /// Takes the bar off the terminal, so that the next line starts clean.
    ~ProgressBar();
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    void show(int done) const;

private:
    const int total;
    const bool visible;
};
