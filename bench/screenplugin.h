#pragma once

#include <QCoreApplication>

#include <memory>

namespace bench {

struct Options;

/**
 * What the program loads for --window, so that it needs Qt Core only for everything else. The root
 * component of libproduction_bench_window.so.
 */
class ScreenPlugin
{
public:
    virtual ~ScreenPlugin() = default;

    /// The application object that the window needs; there must be no other.
    virtual std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) const = 0;

    /// Shows the window until it is closed. Returns the exit code of the program.
    virtual int run(const Options &options) = 0;

    /// Closes the window as its user does, which waits for a pass: nothing may be destroyed under
    /// it.
    virtual void close() = 0;
};

} // namespace bench

Q_DECLARE_INTERFACE(bench::ScreenPlugin, "production.bench.ScreenPlugin/1.0")
