#include <screenlockctrl.h>

#include "../headunit.h"

using bench::HeadUnit;

ScreenLockCtrl *ScreenLockCtrl::getInstance()
{
    return HeadUnit::current().screen();
}

void ScreenLockCtrl::setUserLevel(const int &level)
{
    HeadUnit::current().report({bench::calls::setUserLevel, {level}});
}

void ScreenLockCtrl::setIllLevel(const int &level)
{
    HeadUnit::current().report({bench::calls::setIllLevel, {level}});
}

void ScreenLockCtrl::resumeScreemLight(bool resume)
{
    HeadUnit::current().report({bench::calls::resumeScreenLight, {resume}});
}
