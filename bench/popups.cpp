#include "popups.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace bench {

namespace {

struct Entry
{
    int code;
    PopupKind::Tone tone;
    const char *name;
};

constexpr char context[] = "Popups";

constexpr Entry entries[] = {
    {1, PopupKind::Progress, QT_TRANSLATE_NOOP("Popups", "head unit")},
    {6, PopupKind::Progress, QT_TRANSLATE_NOOP("Popups", "production mode")},
    {8, PopupKind::Trouble, QT_TRANSLATE_NOOP("Popups", "nothing to do")},
    {10, PopupKind::Success, QT_TRANSLATE_NOOP("Popups", "serial number stored")},
    {11, PopupKind::Success, QT_TRANSLATE_NOOP("Popups", "serial number replaced")},
    {12, PopupKind::Progress, QT_TRANSLATE_NOOP("Popups", "serial number kept")},
    {13, PopupKind::Progress, QT_TRANSLATE_NOOP("Popups", "taking a serial number")},
    {15, PopupKind::Trouble, QT_TRANSLATE_NOOP("Popups", "no serial number available")},
    {20, PopupKind::Success, QT_TRANSLATE_NOOP("Popups", "SK value stored")},
    {21, PopupKind::Success, QT_TRANSLATE_NOOP("Popups", "SK value replaced")},
    {22, PopupKind::Progress, QT_TRANSLATE_NOOP("Popups", "SK value kept")},
    {23, PopupKind::Progress, QT_TRANSLATE_NOOP("Popups", "taking an SK value")},
    {24, PopupKind::Trouble, QT_TRANSLATE_NOOP("Popups", "no SK value available")},
    {41, PopupKind::Success, QT_TRANSLATE_NOOP("Popups", "panel set")},
    {70, PopupKind::Success, QT_TRANSLATE_NOOP("Popups", "Bluetooth power set")},
};

} // namespace

PopupKind popupKind(int code)
{
    const auto entry = std::find_if(std::begin(entries), std::end(entries),
                                    [code](const Entry &e) { return e.code == code; });
    if (entry == std::end(entries))
        return {QCoreApplication::translate("Popups", "message"), PopupKind::Progress};
    return {QCoreApplication::translate(context, entry->name), entry->tone};
}

} // namespace bench
