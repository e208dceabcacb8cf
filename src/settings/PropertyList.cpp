#include "settings/PropertyList.h"

#include "settings/PropertyListGuard.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QSaveFile>
#include <QTimeZone>

#include <plist/plist.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct PlistDeleter
{
    void operator()(void *node) const { plist_free(static_cast<plist_t>(node)); }
};
using PlistPtr = std::unique_ptr<void, PlistDeleter>;

// Property-list dates count seconds from 2001-01-01 00:00 UTC.
const QDateTime &referenceDate()
{
    static const QDateTime date(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
    return date;
}

// Dictionary keys repeat a great deal in route records ("lat", "lng" for every
// point); comparing the key node in place and handing out one shared QString
// per distinct short key saves a copy, an allocation and a UTF-8 decode per
// entry.
class KeyCache
{
public:
    QString key(plist_t keyNode)
    {
        for (const auto &entry : m_entries) {
            if (plist_key_val_compare(keyNode, entry.first.constData()) == 0)
                return entry.second;
        }
        char *utf8 = nullptr;
        plist_get_key_val(keyNode, &utf8);
        const QByteArray bytes(utf8 ? utf8 : "");
        free(utf8);
        QString value = QString::fromUtf8(bytes);
        if (bytes.size() <= 8 && m_entries.size() < 16)
            m_entries.emplace_back(bytes, value);
        return value;
    }

private:
    std::vector<std::pair<QByteArray, QString>> m_entries;
};

QVariant toVariant(plist_t node, KeyCache &keys)
{
    switch (plist_get_node_type(node)) {
    case PLIST_DICT: {
        QVariantMap map;
        plist_dict_iter it = nullptr;
        plist_dict_new_iter(node, &it);
        for (;;) {
            plist_t value = nullptr;
            plist_dict_next_item(node, it, nullptr, &value);
            if (!value)
                break;
            // keys arrive sorted when the file came from us or the platform,
            // so appending at the end is the cheap case
            map.insert(map.cend(), keys.key(plist_dict_item_get_key(value)),
                       toVariant(value, keys));
        }
        free(it);
        return map;
    }
    case PLIST_ARRAY: {
        QVariantList list;
        const uint32_t size = plist_array_get_size(node);
        list.reserve(size);
        for (uint32_t i = 0; i < size; ++i)
            list.append(toVariant(plist_array_get_item(node, i), keys));
        return list;
    }
    case PLIST_STRING: {
        uint64_t length = 0;
        const char *text = plist_get_string_ptr(node, &length);
        return QString::fromUtf8(text, qsizetype(length));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_UINT: {
        // integers are signed in the file format; libplist keeps the bits
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return qint64(value);
    }
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_DATE: {
        int32_t sec = 0;
        int32_t usec = 0;
        plist_get_date_val(node, &sec, &usec);
        return referenceDate().addMSecs(qint64(sec) * 1000 + usec / 1000);
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char *bytes = plist_get_data_ptr(node, &length);
        return QByteArray(bytes, qsizetype(length));
    }
    case PLIST_UID: {
        uint64_t value = 0;
        plist_get_uid_val(node, &value);
        return quint64(value);
    }
    default:
        return {};
    }
}

// XML 1.0 cannot hold most control characters (not even escaped) nor
// U+FFFE and U+FFFF, and libplist takes C strings, so a NUL would cut the
// text short. Each such character is written as U+FFFD: the file always
// parses, and the text keeps its length and shows where something was.
QByteArray xmlSafeUtf8(const QString &text)
{
    const auto unfit = [](QChar c) {
        const char16_t u = c.unicode();
        return (u < 0x20 && u != u'\t' && u != u'\n' && u != u'\r') || u == 0xFFFE || u == 0xFFFF;
    };
    if (std::none_of(text.cbegin(), text.cend(), unfit))
        return text.toUtf8();
    QString clean = text;
    for (QChar &c : clean) {
        if (unfit(c))
            c = QChar::ReplacementCharacter;
    }
    return clean.toUtf8();
}

// The write-side twin of KeyCache: the UTF-8 form of the few keys that
// repeat in every route point.
class Utf8Cache
{
public:
    const QByteArray &utf8(const QString &key)
    {
        for (const auto &entry : m_entries) {
            if (entry.first == key)
                return entry.second;
        }
        m_scratch = xmlSafeUtf8(key);
        if (key.size() <= 8 && m_entries.size() < 32) {
            m_entries.emplace_back(key, m_scratch);
            return m_entries.back().second;
        }
        return m_scratch;
    }

private:
    std::vector<std::pair<QString, QByteArray>> m_entries;
    QByteArray m_scratch;
};

plist_t fromVariant(const QVariant &value, Utf8Cache &keys);

plist_t dictFromPairs(const QVariantMap &map, Utf8Cache &keys)
{
    plist_t dict = plist_new_dict();
    // QVariantMap iterates in key order, which is the order the platform's
    // own writer uses for dictionary keys.
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        if (plist_t item = fromVariant(it.value(), keys))
            plist_dict_set_item(dict, keys.utf8(it.key()).constData(), item);
    }
    return dict;
}

plist_t fromVariant(const QVariant &value, Utf8Cache &keys)
{
    switch (value.metaType().id()) {
    case QMetaType::UnknownType:
        return nullptr;
    case QMetaType::QVariantMap:
        return dictFromPairs(*static_cast<const QVariantMap *>(value.constData()), keys);
    case QMetaType::QVariantHash: {
        const QVariantHash hash = value.toHash();
        QVariantMap map;
        for (auto it = hash.cbegin(); it != hash.cend(); ++it)
            map.insert(it.key(), it.value());
        return dictFromPairs(map, keys);
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        const QVariantList list = value.toList();
        plist_t array = plist_new_array();
        for (const QVariant &item : list) {
            if (plist_t node = fromVariant(item, keys))
                plist_array_append_item(array, node);
        }
        return array;
    }
    case QMetaType::Bool:
        return plist_new_bool(value.toBool() ? 1 : 0);
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::Char:
    case QMetaType::SChar:
        return plist_new_uint(uint64_t(value.toLongLong()));
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::UChar:
        return plist_new_uint(value.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return plist_new_real(value.toDouble());
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return plist_new_data(bytes.constData(), uint64_t(bytes.size()));
    }
    case QMetaType::QDateTime: {
        const qint64 ms = referenceDate().msecsTo(value.toDateTime());
        const qint64 sec = ms >= 0 ? ms / 1000 : -((-ms + 999) / 1000);
        return plist_new_date(int32_t(sec), int32_t((ms - sec * 1000) * 1000));
    }
    default:
        return plist_new_string(xmlSafeUtf8(value.toString()).constData());
    }
}

} // namespace

namespace {
// `checked`: the bytes have passed the guard already.
QVariant parse(const char *data, qint64 size, bool checked = false)
{
    if (size <= 0 || size > qint64(UINT32_MAX))
        return {};
    if (!checked && !PropertyListGuard::refusal(QByteArrayView(data, size)).isEmpty())
        return {};
    plist_t root = nullptr;
    plist_from_memory(data, uint32_t(size), &root);
    if (!root)
        return {};
    PlistPtr owner(root);
    KeyCache keys;
    return toVariant(root, keys);
}
} // namespace

QVariant PropertyList::fromData(const QByteArray &data)
{
    return parse(data.constData(), data.size());
}

namespace {
PropertyList::Loaded unreadable(QString problem)
{
    return {{}, PropertyList::ReadStatus::Unreadable, std::move(problem)};
}
} // namespace

PropertyList::Loaded PropertyList::load(const QString &path)
{
    // Opened without blocking, so a named pipe in place of the file cannot
    // hold the program; only then is it known to be a plain file.
    const int fd =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return {};
        return unreadable(QString::fromLocal8Bit(std::strerror(errno)));
    }
    QFile file;
    file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    struct stat info = {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode))
        return unreadable(QCoreApplication::translate("PropertyList", "not a regular file"));
    if (info.st_size > PropertyListGuard::MaxFileBytes)
        return unreadable(
            QCoreApplication::translate("PropertyList", "larger than any settings file"));
    // not mapped: a tool that rewrites the file in place would crash a
    // mapped reader, where a copy merely reads as malformed. One byte more
    // than the size found tells a file that grew meanwhile; asking for no
    // more than that keeps the buffer the file's size.
    const QByteArray data = file.read(qint64(info.st_size) + 1);
    if (data.size() > info.st_size)
        return unreadable(QCoreApplication::translate("PropertyList", "changed while it was read"));
    if (const QString problem = PropertyListGuard::refusal(data); !problem.isEmpty())
        return unreadable(problem);
    QVariant root = parse(data.constData(), data.size(), true);
    if (!root.isValid())
        return unreadable(QCoreApplication::translate("PropertyList", "not a property list"));
    return {std::move(root), ReadStatus::Read, {}};
}

QVariant PropertyList::read(const QString &path)
{
    return load(path).root;
}

QVariantMap PropertyList::readDictionary(const QString &path)
{
    const QVariant root = read(path);
    return root.metaType().id() == QMetaType::QVariantMap ? root.toMap() : QVariantMap();
}

QVariantList PropertyList::readArray(const QString &path)
{
    const QVariant root = read(path);
    return root.metaType().id() == QMetaType::QVariantList ? root.toList() : QVariantList();
}

namespace {
struct XmlText
{
    char *data = nullptr;
    uint32_t length = 0;
    ~XmlText() { plist_to_xml_free(data); }
};

bool renderXml(const QVariant &root, XmlText &text)
{
    Utf8Cache keys;
    PlistPtr node(fromVariant(root, keys));
    if (!node)
        return false;
    plist_to_xml(static_cast<plist_t>(node.get()), &text.data, &text.length);
    return text.data && text.length > 0;
}
} // namespace

QByteArray PropertyList::toXml(const QVariant &root)
{
    XmlText text;
    if (!renderXml(root, text))
        return {};
    return QByteArray(text.data, qsizetype(text.length));
}

bool PropertyList::write(const QString &path, const QVariant &root)
{
    XmlText text;
    if (!renderXml(root, text))
        return false;
    // the hooking component reads this file at any moment: replace it whole
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(text.data, text.length) != qint64(text.length)) {
        file.cancelWriting();
        file.commit();
        return false;
    }
    return file.commit();
}
