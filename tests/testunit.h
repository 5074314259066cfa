#pragma once

#include "bench/headunit.h"

#include <QTemporaryDir>
#include <QVector>

#include <condition_variable>
#include <memory>
#include <mutex>

class ProductionControl;

/**
 * A bench unit with the module, in the process of the test: its own data, its own folder for
 * sticks, and a record of every call of the module on the platform.
 *
 * Lives in the main thread. Its destructor waits until the module's thread is gone.
 */
class TestUnit
{
public:
    explicit TestUnit(bench::HeadUnitConfig config = {});
    ~TestUnit();

    /// Makes a stick: a folder with the file @p fileName of @p content. Returns its directory.
    QString makeStick(const QByteArray &content, const QString &fileName = "production.ini",
                      const QString &stickName = "stick");
    void plug(const QString &stick);
    void unplug(const QString &stick);
    /// For a hook before a call (see HeadUnit::setBeforeCall()), in any thread: has the main
    /// thread unplug @p stick and waits until it has.
    void unplugFromHook(const QString &stick);

    /// The next unit on the line: new data, the same folders. The module must have ended.
    void replaceUnit(bench::HeadUnitConfig config = {});
    bench::HeadUnit &headUnit() { return *unit; }

    /// Gets the control object and tells it that all modules have started.
    ProductionControl *startModule();
    /// Waits until start() has returned and everything it sent has been handled; false in vain.
    bool waitForPass();
    /// Waits until control object, thread and worker are gone; false in vain.
    bool waitForEnd();
    /// Plugs @p stick, starts the module and waits for the pass.
    bool runPass(const QString &stick);

    bool moduleExists() const;

    QVector<bench::Call> calls() const;
    /// The calls named @p name.
    QVector<bench::Call> calls(QLatin1String name) const;
    /// Pop-ups as "code text", in order.
    QStringList popUps() const;
    QVariant stored(bench::Area area, const QString &key) const;

private:
    /// Takes requests to unplug in the main thread.
    class Hand : public QObject
    {
    public:
        explicit Hand(TestUnit &unit);
        bool event(QEvent *event) override;

    private:
        TestUnit &unit;
    };

    void createUnit(bench::HeadUnitConfig config);

    QTemporaryDir folder;
    int unitNumber = 0;
    std::unique_ptr<bench::HeadUnit> unit;
    mutable std::mutex mutex; ///< Guards what follows: calls come from both threads.
    QVector<bench::Call> recorded;
    QString toUnplug;
    std::condition_variable unplugged;
    Hand hand{*this};
};

/// Plugs a stick with @p content as its production.ini and returns its directory.
QString plugFile(TestUnit &unit, const QByteArray &content);

/// The call as "operation(arguments)", the arguments as in JSON but with single quotes:
/// "message('A099',10)", "system('sync')".
QString callText(const bench::Call &call);

/// Gathers the warnings of all threads while it lives.
class Warnings
{
public:
    Warnings();
    ~Warnings();
    Q_DISABLE_COPY(Warnings)

    QStringList texts() const;

private:
    const QtMessageHandler previous;
};

/// How many threads this process has; one that has told its end may not be gone yet.
int threadCount();

/// The lines of @p text as a unit writes them, which end in "\r\n".
QByteArray withLineEnds(const QString &text);

/// The whole content of @p path; empty when it cannot be read.
QByteArray readFile(const QString &path);
bool writeFile(const QString &path, const QByteArray &content);

/**
 * Adds a row for each case of the file @p path, with its texts in the column "parts". A case
 * begins with a blank line and "=== name", and lines "---" part its texts. "␣" and "␍" stand for
 * a blank and a carriage return that could not be seen.
 */
void addTextCases(const QString &path);

/// How a program ended and what it told.
struct Outcome
{
    int exitCode; ///< -1 when it did not start, crashed or hangs.
    QByteArray out;
    QByteArray err;
};

/// Runs @p program in @p folder; blanks separate its @p arguments.
Outcome runProgram(const QString &program, const QString &folder, const QString &arguments);
