#include "commandinput.h"

#include <QSocketNotifier>

#include <cerrno>
#include <unistd.h>

namespace bench {

CommandInput::CommandInput(QObject *parent)
    : QObject(parent)
    , m_notifier(new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this))
{
    connect(m_notifier, &QSocketNotifier::activated, this, &CommandInput::read);
}

void CommandInput::read()
{
    char buffer[4096];
    const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        m_notifier->setEnabled(false);
        take(m_unfinished);
        return;
    }
    m_unfinished.append(buffer, int(count));
    QList<QByteArray> lines = m_unfinished.split('\n');
    m_unfinished = lines.takeLast();
    for (const QByteArray &line : lines)
        take(line);
}

void CommandInput::take(const QByteArray &line)
{
    const QString text = QString::fromLocal8Bit(line).trimmed();
    if (!text.isEmpty())
        emit entered(text);
}

} // namespace bench
