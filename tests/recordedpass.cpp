#include "recordedpass.h"

#include <datadefault.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace {

/// The platform's backlight steps, with blanks between.
QString stepTable()
{
    QStringList steps;
    for (const unsigned char step : qAsConst(DataDefault::panelLightStepValueList))
        steps << QString::number(step);
    return steps.join(' ');
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
    unit.headUnit().setBeforeCall(
        [this](const bench::Call &call) { note(call.name.section("::", -1), call.args); });
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
    json.replace('"', '\'');
    events << name + '(' + json.mid(1, json.size() - 2) + ')';
    if (hook)
        hook(worker, events.last());
}

QString RecordedPass::transcript() const
{
    QString text = events.join('\n') + '\n';
    const QString opening = "message('正在读取USB配置文件，请不要断开电源或拔出USB。',6)\n"
                            "message('成功进入生产模式。',6)\n";
    if (text.startsWith(opening))
        text.remove(0, opening.size());
    return text.replace(QStringLiteral("system('sync')\n").repeated(3), "synced\n");
}

QString plugFile(TestUnit &unit, const QByteArray &content)
{
    const QString stick = unit.makeStick(content);
    unit.plug(stick);
    return stick;
}
