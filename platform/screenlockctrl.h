#pragma once

/// The head unit's screen and backlight control. Every function is called in the UI thread.
class ScreenLockCtrl
{
public:
    /// The one service object; never null.
    static ScreenLockCtrl *getInstance();

    /// Applies the day backlight level, 0 to 255.
    void setUserLevel(const int &level);

    /// Applies the night backlight level, 0 to 255.
    void setIllLevel(const int &level);

    /// Restores the screen light, taking a replaced backlight step list into account.
    void resumeScreemLight(bool resume);
};
