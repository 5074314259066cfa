#include "recordedpass.h"

#include <datadefault.h>

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
    const auto signal = [this](const char *name) {
        return [this, name](auto... arguments) { note({name, {QVariant(arguments)...}}); };
    };
    const auto connect = [this](auto sender, auto receiver) {
        QObject::connect(&worker, sender, receiver);
    };
    connect(&Worker::message, signal("message"));
    connect(&Worker::canbusEntryProductionTestMode, signal("canbus"));
    connect(&Worker::directionKeyEntryProductionTestMode, signal("directionKey"));
    connect(&Worker::lightStepRangeChanged, [=] { signal("lightSteps")(stepTable()); });
    connect(&Worker::userLightLevelChanged, signal("day"));
    connect(&Worker::illLightLevelChanged, signal("night"));
    connect(&Worker::finished, signal("finished"));
    unit.headUnit().setBeforeCall([this](const bench::Call &call) { note(call); });
    worker.setReady();
    worker.start(path);
}

RecordedPass::~RecordedPass()
{
    unit.headUnit().setBeforeCall({});
}

void RecordedPass::note(const bench::Call &call)
{
    events << callText(call);
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
