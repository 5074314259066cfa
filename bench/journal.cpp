#include "journal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace bench {

Journal::~Journal()
{
    if (m_isNew && m_file.size() == 0)
        m_file.remove();
}

bool Journal::open(const QString &path, QString *error)
{
    m_file.setFileName(path);
    const bool isNew = !m_file.exists();
    if (!m_file.open(QIODevice::Append | QIODevice::Unbuffered)) {
        *error = tr("The journal %1 cannot be written: %2; name a file that can be.")
                     .arg(path, m_file.errorString());
        return false;
    }
    m_isNew = isNew;
    return true;
}

void Journal::write(const Call &call)
{
    if (call.name == calls::dataSeen)
        return; // the bench's own doing
    const QString kind =
        call.kind == Call::Service ? QStringLiteral("call") : QStringLiteral("event");
    const QJsonObject line{{kind, call.name},
                           {QStringLiteral("args"), QJsonArray::fromVariantList(call.args)}};
    const QByteArray text = QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
    if (m_file.write(text) != text.size())
        qWarning("The journal misses a line: %s", text.trimmed().constData());
}

} // namespace bench
