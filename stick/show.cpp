#include "readablefile.h"
#include "texts.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace production;

namespace stick {

namespace {

bool isList(const QVariant &value)
{
    return value.userType() == QMetaType::QVariantList;
}

QJsonObject keyToJson(const QString &key, const QVariant &value, const QString &comment)
{
    QJsonObject object{{QStringLiteral("key"), key}};
    if (isList(value))
        object.insert(QStringLiteral("value"), QJsonArray::fromStringList(value.toStringList()));
    else
        object.insert(QStringLiteral("value"), value.toString());
    if (!comment.isNull())
        object.insert(QStringLiteral("comment"), comment);
    return object;
}

/// One key in a line: a document of a million keys at once would take a gigabyte.
void showAsJson(const ReadFile &file, Console &console)
{
    const bool readable = file.exitCode == NothingToReport;
    console.write(QByteArray("{\"readable\": ") + (readable ? "true" : "false") + ", \"keys\": [");
    const char *separator = "\n";
    for (auto it = file.map.cbegin(); it != file.map.cend(); ++it) {
        const QJsonObject key =
            keyToJson(it.key(), it.value(), file.comments.value(it.key(), QString()));
        console.write(separator + QJsonDocument(key).toJson(QJsonDocument::Compact));
        separator = ",\n";
    }
    console.write("\n]}\n");
}

QString valueText(const QVariant &value)
{
    if (!isList(value))
        return value == bareValue() ? QString() : QStringLiteral(" = ") + value.toString();
    QStringList items = value.toStringList();
    for (QString &item : items)
        item = QLatin1Char('"') + item + QLatin1Char('"');
    return QStringLiteral(" = [%1]").arg(items.join(QLatin1String(", ")));
}

void showAsText(const ReadFile &file, Console &console)
{
    for (auto it = file.map.cbegin(); it != file.map.cend(); ++it) {
        const QString comment = file.comments.value(it.key());
        QString line =
            console.styled(printable(it.key()), Console::Bold) + printable(valueText(it.value()));
        if (!comment.isEmpty())
            line += QLatin1String("    ") + console.styled(printable(comment), Console::Faint);
        console.print(line);
    }
}

} // namespace

ExitCode runShow(const Arguments &arguments, Console &console)
{
    const QString path = arguments.paths.first();
    console.showProgress(Texts::tr("reading %1").arg(path));
    const ReadFile file = readLikeUnit(path, console);
    if (file.exitCode == Failed)
        return Failed;
    if (arguments.json)
        showAsJson(file, console);
    else
        showAsText(file, console);
    return file.exitCode;
}

} // namespace stick
