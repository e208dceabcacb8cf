#pragma once

#include "FileBytes.h"

#include <QProcess>
#include <QTest>

#include <plist/plist.h>

// File helpers shared by the settings tests.
namespace SettingsFiles {

using ::bytesOf;
using ::writeBytes;

enum class Form { Xml, Binary };

// The document (either form) parsed by libplist and written by it in
// `form`: the reference the reader and the writer must match. Empty when
// libplist refuses the document.
inline QByteArray throughLibplist(const QByteArray &document, Form form = Form::Xml)
{
    plist_t root = nullptr;
    plist_from_memory(document.constData(), uint32_t(document.size()), &root);
    if (!root)
        return {};
    char *bytes = nullptr;
    uint32_t length = 0;
    (form == Form::Xml ? plist_to_xml : plist_to_bin)(root, &bytes, &length);
    QByteArray result(bytes, qsizetype(length));
    free(bytes);
    plist_free(root);
    return result;
}

// The same property list in the binary form the system may convert a file to.
inline QByteArray toBinary(const QByteArray &xml)
{
    return throughLibplist(xml, Form::Binary);
}

// Compares a file with its reference under tests/settings/golden. On a
// difference it writes the actual bytes beside the reference (NAME.actual)
// and prints a unified diff.
inline bool matchesGolden(const QString &name, const QString &path)
{
    const QString reference = QStringLiteral(GOLDEN_DIR "/") + name;
    const QByteArray expected = bytesOf(reference);
    if (!expected.isEmpty() && expected == bytesOf(path))
        return true;
    writeBytes(reference + QStringLiteral(".actual"), bytesOf(path));
    QProcess::execute(QStringLiteral("diff"),
                      {QStringLiteral("-u"), reference, reference + QStringLiteral(".actual")});
    return false;
}

} // namespace SettingsFiles

#define COMPARE_GOLDEN(name, path)                                                                 \
    QVERIFY2(SettingsFiles::matchesGolden(QStringLiteral(name), path), name " differs, see above")
