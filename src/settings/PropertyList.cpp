#include "settings/PropertyList.h"

#include "settings/PropertyListGuard.h"
#include "settings/PropertyListXml.h"

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

} // namespace

namespace {
// `checked`: the bytes have passed the guard already.
QVariant parse(const char *data, qint64 size, bool checked = false)
{
    if (size <= 0 || size > qint64(UINT32_MAX))
        return {};
    if (!checked && !PropertyListGuard::refusal(QByteArrayView(data, size)).isEmpty())
        return {};
    // the binary form is rare (a file some tool converted); the XML form
    // is what every writer here and the hooking component use
    if (!QByteArrayView(data, size).startsWith("bplist00"))
        return PropertyListXml::read(QByteArrayView(data, size), PropertyListGuard::MaxDepth);
    plist_t root = nullptr;
    plist_from_bin(data, uint32_t(size), &root);
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

QByteArray PropertyList::toXml(const QVariant &root)
{
    return PropertyListXml::write(root);
}

bool PropertyList::write(const QString &path, const QVariant &root)
{
    const QByteArray text = PropertyListXml::write(root);
    if (text.isEmpty())
        return false;
    // the hooking component reads this file at any moment: replace it whole
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(text) != text.size()) {
        file.cancelWriting();
        file.commit();
        return false;
    }
    return file.commit();
}
