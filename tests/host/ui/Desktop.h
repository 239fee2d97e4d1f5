#pragma once

#include <QtCore/QPoint>
#include <QtCore/QProcess>
#include <QtCore/QStringList>

#include <array>

/// A virtual display of the test's own, with a window manager, a mouse and a keyboard that act as a
/// user's: no other test shares them, and no user's windows are met. Must be there before the
/// application object. Sets DISPLAY.
class Desktop
{
public:
    static constexpr int Width = 1600;
    static constexpr int Height = 1000;

    /// `screens` lie side by side as X's own, which Qt takes for separate screens.
    explicit Desktop(int screens = 1);
    ~Desktop();
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;

    void moveTo(const QPoint &position) const;
    void press() const;
    void release() const;
    void click(const QPoint &position) const;
    void doubleClick(const QPoint &position) const;

    /// Presses and releases keys one after the other, by their names in X, such as "alt+F4".
    void keys(const QStringList &names) const;

    /// What the window manager knows of a window's state, such as "_NET_WM_STATE_ABOVE".
    static QString windowState(quintptr window);

private:
    static void input(const QStringList &arguments);

    QProcess server;
    QProcess windowManager;
};
