#pragma once

#include "../screenplugin.h"

#include <QObject>

namespace bench {

/// The library's root component.
class WindowPlugin : public QObject, public ScreenPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "production.bench.ScreenPlugin/1.0")
    Q_INTERFACES(bench::ScreenPlugin)

public:
    std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) const override;
    int run(const Options &options) override;
    void close() override;
};

} // namespace bench
