#include "recordedpass.h"

#include <datadefault.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace {

/// The platform's backlight steps, with blanks between.
QString stepTable()
{
    QStringList steps;
    for (const unsigned char step : qAsConst(DataDefault::panelLightStepValueList))
        steps << QString::number(step);
    return steps.join(QLatin1Char(' '));
}

} // namespace

RecordedPass::RecordedPass(TestUnit &unit, const QString &path, Hook hook)
    : unit(unit)
    , hook(std::move(hook))
{
    using Worker = ProductionObject;
    const auto signal = [this](const char *name, const QVariantList &arguments = {}) {
        note(QLatin1String(name), arguments);
    };
    QObject::connect(&worker, &Worker::message, [=](const QString &text, int code) {
        signal("message", {text, code});
    });
    QObject::connect(&worker, &Worker::canbusEntryProductionTestMode, [=](bool entry, int id) {
        signal("canbus", {entry, id});
    });
    QObject::connect(&worker, &Worker::directionKeyEntryProductionTestMode,
                     [=](bool entry) { signal("directionKey", {entry}); });
    QObject::connect(&worker, &Worker::lightStepRangeChanged,
                     [=] { signal("lightSteps", {stepTable()}); });
    QObject::connect(&worker, &Worker::userLightLevelChanged,
                     [=](int level) { signal("day", {level}); });
    QObject::connect(&worker, &Worker::illLightLevelChanged,
                     [=](int level) { signal("night", {level}); });
    QObject::connect(&worker, &Worker::finished, [=] { signal("finished"); });
    unit.headUnit().setBeforeCall([this](const bench::Call &call) {
        note(call.name.section(QStringLiteral("::"), -1), call.args);
    });
    worker.setReady();
    worker.start(path);
}

RecordedPass::~RecordedPass()
{
    unit.headUnit().setBeforeCall({});
}

void RecordedPass::note(const QString &name, const QVariantList &arguments)
{
    QString json = QString::fromUtf8(
        QJsonDocument(QJsonArray::fromVariantList(arguments)).toJson(QJsonDocument::Compact));
    json.replace(QLatin1Char('"'), QLatin1Char('\''));
    events << name + QLatin1Char('(') + json.mid(1, json.size() - 2) + QLatin1Char(')');
    if (hook)
        hook(worker, events.last());
}

QStringList RecordedPass::stepMessages() const
{
    static const QRegularExpression message(QStringLiteral("^message\\('(.*)',(\\d+)\\)$"));
    QStringList messages;
    for (const QString &event : events) {
        const QRegularExpressionMatch match = message.match(event);
        const int code = match.captured(2).toInt();
        if (match.hasMatch() && code != 6 && code != 8)
            messages << (match.captured(2) + QLatin1Char(' ') + match.captured(1)).trimmed();
    }
    return messages;
}

QStringList RecordedPass::effects() const
{
    return events.filter(
        QRegularExpression(QStringLiteral("^(?!message\\(|system\\('sync'|finished)")));
}

QStringList list(const char *text)
{
    return QString::fromUtf8(text).split(QStringLiteral("; "), Qt::SkipEmptyParts);
}

QString plugFile(TestUnit &unit, const QByteArray &content)
{
    const QString stick = unit.makeStick(content);
    unit.plug(stick);
    return stick;
}
