#include "reader.h"

#include "grammar.h"

#include <QIODevice>
#include <QTextCodec>

#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

namespace production {

namespace {

/// One allocation, and never null: QSettings lists no key at all when the map holds a null one.
QString fullKey(const QString &prefix, QStringView name)
{
    QString key(prefix.size() + int(name.size()), Qt::Uninitialized);
    std::memcpy(key.data(), prefix.constData(), size_t(prefix.size()) * sizeof(QChar));
    std::memcpy(key.data() + prefix.size(), name.data(), size_t(name.size()) * sizeof(QChar));
    return key;
}

/**
 * Fills a map with keys that mostly ascend within a section, as in a file that a unit has rewritten
 * (apart from the few that it puts first): the place beside the key before is then the right one.
 *
 * Keys wait until many nodes of the map can be made one after the other; the last ones until the
 * end of this object. QSettings soon frees the nodes but keeps the keys, and keys between the nodes
 * would leave it with holes for memory: taking one serial of a million then takes a quarter longer.
 */
template <typename Value>
class AscendingInsertion
{
public:
    explicit AscendingInsertion(QMap<QString, Value> &map)
        : map(map)
        , next(map.end())
    {
        waiting.reserve(mostWaiting);
    }

    ~AscendingInsertion() { insertWaiting(); }

    void insert(QString key, Value value)
    {
        waiting.emplace_back(std::move(key), std::move(value));
        if (waiting.size() == mostWaiting)
            insertWaiting();
    }

private:
    static constexpr size_t mostWaiting = 1024;

    void insertWaiting()
    {
        for (auto &[key, value] : waiting) {
            const auto inserted = map.insert(next, key, Value());
            *inserted = std::move(value);
            next = std::next(inserted);
        }
        waiting.clear();
    }

    QMap<QString, Value> &map;
    typename QMap<QString, Value>::iterator next; ///< Behind the key inserted last.
    std::vector<std::pair<QString, Value>> waiting;
};

/// UTF-16 can hold them, and no rewrite in UTF-8 could.
void replaceLoneSurrogates(QString &text)
{
    for (int i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
}

} // namespace

QString decodeText(const QByteArray &bytes, bool *cutOff)
{
    QTextCodec *const utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec *const codec = QTextCodec::codecForUtfText(bytes, utf8);
    // With a state, a character that the end of the file cuts off is dropped, as in a stream.
    QTextCodec::ConverterState state;
    QString text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    if (cutOff != nullptr)
        *cutOff = state.remainingChars > 0;
    if (codec != utf8)
        replaceLoneSurrogates(text);
    return text;
}

bool readSettings(QIODevice &device, SettingsMap &map, KeyComments &comments)
{
    comments.clear();
    if (device.size() > mostCharacters)
        return false;
    const QByteArray bytes = device.readAll();
    // A stick that fails in the middle must not pass for a shorter file: a rewrite would cut it.
    if (!device.isSequential() && bytes.size() < device.size())
        return false;

    const QString text = decodeText(bytes);
    bool readable = true;
    qint64 keyCharacters = 0;
    QString prefix = QLatin1String("");
    AscendingInsertion values(map);
    AscendingInsertion keyComments(comments);

    forEachLine(text, [&](int, QStringView line) {
        if (isSectionHeader(line)) {
            const SectionHeader header = scanSectionHeader(line);
            readable &= header.closed;
            prefix = header.prefix();
            return;
        }
        const KeyLine scanned = scanKeyLine(line);
        const QStringView name = scanned.name();
        keyCharacters += prefix.size() + name.size();
        readable &= !scanned.danglingBackslash && keyCharacters <= mostCharacters;
        if (keyCharacters > mostCharacters)
            return;
        QString key = fullKey(prefix, name);
        if (!scanned.comment.isEmpty())
            keyComments.insert(key, scanned.comment.toString());
        values.insert(std::move(key), scanned.value());
    });
    return readable;
}

} // namespace production
