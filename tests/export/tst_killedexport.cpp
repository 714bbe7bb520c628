#include "export/kmlfiles.h"
#include "export/textlog.h"
#include "sitefixture.h"
#include "support/child.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <memory>

using namespace quillon;
using namespace quillon::test;

namespace {

constexpr int kills = 20; // of each kind of export
constexpr quint32 longestLifeUs = 60'000;

// One of the two logs between which the exports change. The second has a month more, and none of its
// receptions of July belongs to a transmitter.
Logbook logOf(bool second)
{
    constexpr int receptions = 3'000;
    Logbook log;
    for (int i = 0; i < receptions; ++i) {
        const bool july = i % 3 == 0;
        const QString month = july ? u"07"_s : i % 3 == 1 ? u"08"_s : second ? u"10"_s : u"09"_s;
        log.AddEntry(
            reception(u"%1/%2/2010 12:00:%3"_s.arg(i % 28 + 1).arg(month).arg(i % 60), u"D382"_s, u"89.1"_s,
                second ? u"SECOND"_s : u"FIRST"_s, july && second ? u"Nowhere"_s : u"Langenberg"_s, u"D"_s));
    }
    return log;
}

// One kind of export, of what a site is made from, into a directory that holds templates. Its files are in
// `folder` there.
struct Export
{
    QString folder;
    std::function<void(const QString &directory, const Site &site)> write;
};

Export exportOf(const QString &kind)
{
    if (kind == u"transmitters") {
        return {{}, [](const QString &directory, const Site &site) {
                    writeTransmitterKml(directory, site.transmitters, CodePage());
                }};
    }
    if (kind == u"logbook") {
        return {{}, [](const QString &directory, const Site &site) {
                    writeLogbookKml(directory, site.log, site.transmitters, CodePage());
                }};
    }
    if (kind == u"text") {
        return {{}, [](const QString &directory, const Site &site) {
                    writeTextLog(directory, site.grid.rows(),
                        {at(u"01/01/2010"_s), at(u"31/12/2010"_s), false, {}}, site.regional);
                }};
    }
    return {u"html"_s, [](const QString &directory, const Site &site) {
                exportWebPages(directory,
                    {site.grid.rows(), site.transmitters, u"DL1ABC"_s, u"V1.0.12"_s,
                        at(u"01/02/2012 03:04:05"_s)},
                    site.regional);
            }};
}

using Files = QMap<QString, QByteArray>;

Files filesOf(const TestDirectory &home, const QString &folder)
{
    const QDir directory(home.file(folder));
    Files files;
    const QStringList names = directory.entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    for (const QString &name : names) {
        QFile file(directory.filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            files.insert(name, file.readAll());
        }
    }
    return files;
}

TransmitterList manyTransmitters(bool second)
{
    constexpr int others = 2'000;
    TransmitterList list = sampleTransmitters();
    for (int i = 0; i < others; ++i) {
        list.add({u"Site %1"_s.arg(i), u"D"_s, second ? u"50"_s : u"51"_s, u"7"_s, {}});
    }
    return list;
}

std::unique_ptr<Site> siteOf(bool second)
{
    const Logbook log = logOf(second);
    return std::make_unique<Site>(log, manyTransmitters(second));
}

// The bytes that every file of a folder may have, and which of them were met.
struct TwoContents
{
    Files first;
    Files second;
    bool firstMet = false;
    bool secondMet = false;

    [[nodiscard]] bool isLeftover(const QString &name) const
    {
        if (!name.startsWith(u'.') || !name.endsWith(u".new")) {
            return false;
        }
        const QString of = name.sliced(1).chopped(4);
        return first.contains(of) || second.contains(of);
    }

    // The name of a file that is neither; empty when there is none.
    [[nodiscard]] QString neither(const Files &now)
    {
        for (auto file = now.begin(); file != now.end(); ++file) {
            const QByteArray one = first.value(file.key());
            const QByteArray other = second.value(file.key());
            if (isLeftover(file.key()) || (one == other && file.value() == one)) {
                continue;
            }
            firstMet = firstMet || file.value() == one;
            secondMet = secondMet || file.value() == other;
            if (file.value() != one && file.value() != other) {
                return file.key();
            }
        }
        return {};
    }
};

} // namespace

class TestKilledExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filesOfAKilledExportAreOldOrNew_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"transmitters", "logbook", "text", "web pages"}) {
            QTest::newRow(kind) << QString::fromLatin1(kind);
        }
    }

    void filesOfAKilledExportAreOldOrNew()
    {
        QFETCH(QString, kind);
        const Export one = exportOf(kind);
        const std::unique_ptr<Site> first = siteOf(false);
        const std::unique_ptr<Site> second = siteOf(true);
        one.write(first->directory.path(), *first);
        one.write(second->directory.path(), *second);
        TwoContents contents {filesOf(first->directory, one.folder), filesOf(second->directory, one.folder)};
        QVERIFY(contents.first != contents.second);

        const std::unique_ptr<Site> home = siteOf(false);
        const QString path = home->directory.path();
        QRandomGenerator random(19480512);
        for (int i = 0; i < kills; ++i) {
            one.write(path, *first);
            Files now = filesOf(home->directory, one.folder);
            for (auto file = contents.first.begin(); file != contents.first.end(); ++file) {
                QCOMPARE(now.value(file.key()), file.value());
            }
            // Nothing is left of the export that was killed before.
            const QStringList names = now.keys();
            QCOMPARE(names.filter(QRegularExpression(u"^\\."_s)), QStringList());

            Child child([&] {
                for (;;) {
                    one.write(path, *second);
                    one.write(path, *first);
                }
            });
            ::usleep(random.bounded(longestLifeUs));
            QVERIFY(child.kill());
            now = filesOf(home->directory, one.folder);
            QCOMPARE(contents.neither(now), QString());
        }
        QVERIFY(contents.firstMet);
        QVERIFY(contents.secondMet);
    }
};

QTEST_GUILESS_MAIN(TestKilledExport)
#include "tst_killedexport.moc"
