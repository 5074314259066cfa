#include "terminal.h"

#include "popups.h"
#include "valuetext.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace bench {

namespace {

constexpr int labelWidth = 9;
constexpr int popupNameWidth = 28;
constexpr int areaWidth = 12;
constexpr int keyWidth = 26;

/// Chinese characters take two columns of a terminal.
int columns(const QString &text)
{
    return text.size() + int(std::count_if(text.begin(), text.end(), [](QChar c) {
               return c.unicode() >= 0x2e80 && c.unicode() <= 0xff60;
           }));
}

QString padded(const QString &text, int width)
{
    return text + QString(std::max(0, width - columns(text)), QLatin1Char(' '));
}

bool wantsColour()
{
    return ::isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR")
        && qgetenv("TERM") != "dumb";
}

} // namespace

Terminal::Terminal()
    : m_colour(wantsColour())
{
}

void Terminal::show(const Call &call)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    const auto &args = call.args;
    if (call.name == calls::system)
        return showCommand(args.at(0).toString());
    flushCommand();

    const auto onOff = [](bool on) { return on ? tr("on") : tr("off"); };
    if (call.name == calls::showMessage) {
        const Popup popup{args.at(1).toInt(), args.at(0).toString()};
        line(tr("pop-up"), popupText(popup), popupStyle(popup));
    } else if (const auto value = storedValue(call)) {
        const QString text = isSettingsList(*value)
            ? tr("%n setting(s)", nullptr, value->value.toList().size() / 3)
            : plainText(value->value);
        line(tr("store"),
             padded(areaName(value->area), areaWidth) + value->key + QLatin1String(" = ") + text,
             Faint);
    } else if (call.name == calls::setUserLevel) {
        line(tr("screen"), tr("day level %1").arg(args.at(0).toInt()));
    } else if (call.name == calls::setIllLevel) {
        line(tr("screen"), tr("night level %1").arg(args.at(0).toInt()));
    } else if (call.name == calls::resumeScreenLight) {
        line(tr("screen"), tr("light restored with the new step table"));
    } else if (call.name == calls::canbusTestMode) {
        line(tr("test"),
             tr("CAN bus %1, index %2").arg(onOff(args.at(0).toBool())).arg(args.at(1).toInt()));
    } else if (call.name == calls::mcuTestMode) {
        line(tr("test"), tr("direction keys %1").arg(onOff(args.at(0).toBool())));
    } else if (call.name == calls::dataSeen) {
        line(tr("test"), tr("data seen by %1").arg(args.at(0).toString()));
    } else if (call.name == calls::plugged) {
        line(tr("stick"), tr("plugged %1").arg(args.at(0).toString()));
    } else if (call.name == calls::unplugged) {
        line(tr("stick"), tr("unplugged %1").arg(args.at(0).toString()));
    } else if (call.name == calls::ended) {
        line(tr("module"), tr("ended"));
    } else {
        line(call.name, plainText(call.args));
    }
}

QString Terminal::popupText(const Popup &popup) const
{
    const QString name = popupKind(popup.code).name;
    return QStringLiteral("%1  ").arg(popup.code, 2)
        + (popup.text.isEmpty() ? name : padded(name, popupNameWidth) + popup.text);
}

Terminal::Style Terminal::popupStyle(const Popup &popup) const
{
    switch (popupKind(popup.code).tone) {
    case PopupKind::Trouble:
        return Bad;
    case PopupKind::Success:
        return Good;
    case PopupKind::Progress:
        break;
    }
    return Plain;
}

void Terminal::showCommand(const QString &command)
{
    if (command != m_command)
        flushCommand();
    m_command = command;
    ++m_commandCount;
}

void Terminal::flushCommand()
{
    if (m_commandCount == 0)
        return;
    const QString times = m_commandCount > 1 ? tr("  (%1 times)").arg(m_commandCount) : QString();
    m_commandCount = 0;
    line(tr("command"), m_command + times, Faint);
}

void Terminal::show(const PassResult &result)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    flushCommand();
    if (result.configurationFile.isEmpty()) {
        line(tr("pass"), tr("no configuration file on any stick"));
        return;
    }
    write(QStringLiteral("\n") + tr("The pass over %1").arg(result.configurationFile)
          + QLatin1Char('\n'));
    showStoredValues(result.stored);
    for (const PoolChange &pool : result.pools) {
        const QString taken = pool.taken.isEmpty()
            ? tr("nothing taken")
            : tr("taken: %1").arg(pool.taken.join(QLatin1String(", ")));
        row(tr("%1 pool").arg(pool.group),
            tr("%1 before, %2 after; %3").arg(pool.before).arg(pool.after).arg(taken));
    }
    if (result.fileGone)
        row(tr("file"), tr("gone"));
    if (!result.markerLine.isEmpty())
        row(tr("marker"),
            result.markerGrown ? result.markerLine
                               : tr("no new line; the last one: %1").arg(result.markerLine));
    write(QStringLiteral("\n"));
}

void Terminal::show(const Verdict &verdict)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    flushCommand();
    const QString trouble = verdict.trouble();
    const QString result = trouble.isEmpty() ? tr("in order") : tr("NOT in order: %1").arg(trouble);
    write(QLatin1Char('\n')
          + styled(tr("%1: %2").arg(verdict.unit, result), trouble.isEmpty() ? Good : Bad)
          + QLatin1Char('\n'));
    if (verdict.pass) {
        row(tr("stored"), tr("%n value(s)", nullptr, verdict.pass->stored.size()));
        showSerials(verdict);
    }
    QString label = tr("told");
    for (const Popup &popup : verdict.told) {
        row(label, popupText(popup), popupStyle(popup));
        label.clear();
    }
    write(QStringLiteral("\n"));
}

void Terminal::showSerials(const Verdict &verdict)
{
    QStringList serials;
    const QVector<UnitValue> stored = verdict.serials();
    for (const UnitValue &serial : stored)
        serials.append(serial.key + QLatin1Char(' ') + plainText(serial.value));
    if (!serials.isEmpty())
        row(tr("serials"), serials.join(QLatin1String(", ")));

    bool usedUp = false;
    QStringList left;
    for (const PoolChange &pool : verdict.pass->pools) {
        left.append(tr("%1 %2").arg(pool.group).arg(pool.after));
        usedUp = usedUp || pool.after == 0;
    }
    if (!left.isEmpty())
        row(tr("left"), left.join(QLatin1String(", ")), usedUp ? Bad : Plain);
}

void Terminal::row(const QString &label, const QString &text, Style style)
{
    write(QLatin1String("  ") + padded(label, areaWidth) + styled(text, style) + QLatin1Char('\n'));
}

void Terminal::showStoredValues(const QVector<UnitValue> &values)
{
    if (values.isEmpty())
        row(tr("unit"), tr("nothing stored"));
    QString area;
    for (const UnitValue &value : values) {
        const QStringList lines = valueLines(value);
        const QString name = areaName(value.area);
        QString key = value.key;
        for (const QString &text : lines) {
            row(name == area ? QString() : name, padded(key, keyWidth) + QLatin1Char(' ') + text);
            area = name;
            key.clear();
        }
    }
}

void Terminal::beginUnit(const QString &name)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    write(styled(tr("--- %1 ---").arg(name), Faint) + QLatin1Char('\n'));
}

void Terminal::note(const QString &text)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    flushCommand();
    write(styled(text, Faint) + QLatin1Char('\n'));
}

void Terminal::line(const QString &label, const QString &text, Style style)
{
    write(styled(padded(label, labelWidth), Faint) + QLatin1Char(' ') + styled(text, style)
          + QLatin1Char('\n'));
}

QString Terminal::styled(const QString &text, Style style) const
{
    if (!m_colour || style == Plain)
        return text;
    const char *code = style == Faint ? "2" : style == Good ? "32" : "1;31";
    return QStringLiteral("\033[%1m%2\033[0m").arg(QLatin1String(code), text);
}

void Terminal::write(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

} // namespace bench
