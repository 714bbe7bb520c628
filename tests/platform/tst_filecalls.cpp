#include "platform/filecalls.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// What changes the disk, spelled as system call, standard library or toolkit.
const QRegularExpression &changes()
{
    static const QRegularExpression pattern(
        uR"((?<!\w)::(write|pwrite|writev|creat|unlink|unlinkat|rename|renameat|mkdir|mkdirat|mkdtemp|mkstemp|)"
        uR"(rmdir|link|linkat|symlink|truncate|ftruncate|fchmod|chmod|fsync|fdatasync)\()"
        uR"(|std::(filesystem|ofstream|fstream|remove|rename)|\b(fopen|fwrite|mkdtemp|mkstemp)\()"
        uR"(|\bO_(WRONLY|RDWR|CREAT|APPEND|TRUNC)\b)"
        uR"(|\bQ(SaveFile|TemporaryFile|TemporaryDir|DataStream)\b|QFile::(remove|rename|copy|link|resize|)"
        uR"(setPermissions|moveToTrash)\(|[.>](removeRecursively|mkpath|rmpath|mkdir|rmdir)\()"
        uR"(|(?<!buffer\.open\()\bQIODevice::(WriteOnly|ReadWrite|Append|Truncate)\b)"_s);
    return pattern;
}

QStringList linesThatMatch(const QString &path, const QRegularExpression &pattern)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("a source cannot be read");
    }
    QStringList found;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString &line : lines) {
        if (!line.trimmed().startsWith(u"//"_s) && pattern.match(line).hasMatch()) {
            found += path + u": "_s + line.trimmed();
        }
    }
    return found;
}

} // namespace

class TestFileCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The list of system calls is true: no source of the program changes the disk by another way.
    void nothingIsWrittenPastThem()
    {
        const QDir root(QStringLiteral(QUILLON_TEST_DATA "/../.."));
        QStringList found;
        int sources = 0;
        for (const QString &folder :
            {u"app"_s, u"backup"_s, u"core"_s, u"document"_s, u"export"_s, u"fmlist"_s, u"geo"_s, u"import"_s,
                u"net"_s, u"platform"_s, u"stats"_s, u"txdb"_s, u"ui"_s}) {
            QDirIterator files(
                root.filePath(folder), {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString path = files.next();
                ++sources;
                if (!path.endsWith(u"/platform/filecalls.cpp"_s)) {
                    found += linesThatMatch(path, changes());
                }
            }
        }
        QVERIFY(sources > 100);
        QVERIFY2(found.isEmpty(), qPrintable(found.join(u'\n')));
    }

    void theSearchFindsThem()
    {
        const QString calls = QStringLiteral(QUILLON_TEST_DATA "/../../platform/filecalls.cpp");
        QVERIFY(linesThatMatch(calls, changes()).size() >= 10);
    }
};

QTEST_GUILESS_MAIN(TestFileCalls)
#include "tst_filecalls.moc"
