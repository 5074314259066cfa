#include "journal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace bench {

bool Journal::open(const QString &path, QString *error)
{
    m_file.setFileName(path);
    if (m_file.open(QIODevice::Append | QIODevice::Unbuffered))
        return true;
    *error = tr("The journal %1 cannot be written: %2.").arg(path, m_file.errorString());
    return false;
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
