#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

namespace bench {

/**
 * The lines of standard input, as they come. Lives in the main thread.
 *
 * Its end, or a standard input that cannot be read, only means that there are no more lines.
 */
class CommandInput : public QObject
{
    Q_OBJECT

public:
    explicit CommandInput(QObject *parent = nullptr);

signals:
    /// A line without its end and without blanks around it; never empty.
    void entered(QString line);

private slots:
    void read();

private:
    void take(const QByteArray &line);

    QSocketNotifier *m_notifier;
    QByteArray m_unfinished; ///< what has come of the next line
};

} // namespace bench
