#include "ui/keptfilters.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

FilterTexts es()
{
    return {u"km>1500, \"a; b\" -é = @"_s, u"Es"_s, u"E"_s, u"2025"_s, u"Not sent"_s};
}

QStringList namesOf(const KeptFilters &filters)
{
    QStringList names;
    for (const KeptFilters::Kept &kept : filters.all()) {
        names += kept.name;
    }
    return names;
}

void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class TestKeptFilters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_path = m_directory.filePath(u"%1/quillon.conf"_s.arg(++m_number)); }

    void areThereInTheNextRun()
    {
        KeptFilters filters(m_path);
        QVERIFY(filters.all().empty());
        QVERIFY(filters.save(u"Möwe, far = away"_s, es()));
        QVERIFY(filters.save(u"empty"_s, {}));
        QVERIFY(filters.save(u"B"_s, {u"x"_s, {}, {}, {}, {}}));
        const KeptFilters again(m_path);
        QCOMPARE(namesOf(again), (QStringList {u"B"_s, u"empty"_s, u"Möwe, far = away"_s}));
        QVERIFY(again.all() == filters.all());
        QVERIFY(again.find(u"möwe, FAR = away"_s) == es());
        QVERIFY(!again.find(u"other"_s));
    }

    void areRenamedAndRemoved()
    {
        KeptFilters filters(m_path);
        filters.save(u"one"_s, es());
        filters.save(u"two"_s, {});
        filters.rename(u"one"_s, u"Zwei"_s);
        QCOMPARE(namesOf(filters), (QStringList {u"two"_s, u"Zwei"_s}));
        QVERIFY(filters.find(u"zwei"_s) == es());
        filters.rename(u"nothing"_s, u"x"_s);
        filters.remove(u"TWO"_s);
        filters.remove(u"nothing"_s);
        QCOMPARE(namesOf(KeptFilters(m_path)), (QStringList {u"Zwei"_s}));
        filters.save(u"ZWEI"_s, {});
        QVERIFY(KeptFilters(m_path).all() == (std::vector<KeptFilters::Kept> {{u"ZWEI"_s, {}}}));
    }

    void areTakenOverOnceFromWhereTheyWere()
    {
        const QString earlier = m_directory.filePath(u"%1/windows.ini"_s.arg(m_number));
        QVERIFY(KeptFilters(m_path, earlier).all().empty());
        QVERIFY(!QFile::exists(m_path));
        QSettings(earlier, QSettings::IniFormat).setValue(u"version"_s, 1);
        KeptFilters(earlier).save(u"Spain"_s, es());
        QVERIFY(KeptFilters(m_path, earlier).find(u"Spain"_s) == es());
        QVERIFY(KeptFilters(m_path).find(u"Spain"_s) == es());
        QCOMPARE(QSettings(earlier, QSettings::IniFormat).value(u"version"_s).toInt(), 1);
        // What is removed stays removed.
        KeptFilters(m_path, earlier).remove(u"Spain"_s);
        QVERIFY(KeptFilters(m_path, earlier).all().empty());
    }

    void leaveOtherGroupsOfTheFileAlone()
    {
        QSettings(m_path, QSettings::IniFormat).setValue(u"Window/size"_s, 5);
        KeptFilters filters(m_path);
        filters.save(u"one"_s, es());
        filters.remove(u"one"_s);
        QCOMPARE(QSettings(m_path, QSettings::IniFormat).value(u"Window/size"_s).toInt(), 5);
    }

    void aBrokenFileCostsOnlyTheMemory_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("junk") << QByteArray("\x01\x02[[[=\n\\x\xff\xfe");
        QTest::newRow("no end of the group") << QByteArray("[KeptFilters\nsize=3\n");
        QTest::newRow("size is no number") << QByteArray("[KeptFilters]\nsize=many\n1\\name=a\n");
        QTest::newRow("size below zero") << QByteArray("[KeptFilters]\nsize=-1\n1\\name=a\n");
        QTest::newRow("too many") << QByteArray("[KeptFilters]\nsize=2000000000\n");
        QTest::newRow("no name") << QByteArray("[KeptFilters]\nsize=1\n1\\text=a\n");
        QTest::newRow("too large") << QByteArray(5 * 1024 * 1024, 'x');
    }

    void aBrokenFileCostsOnlyTheMemory()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        put(m_path, bytes);
        KeptFilters filters(m_path);
        QVERIFY(filters.all().empty());
        QVERIFY(filters.save(u"one"_s, es()));
        QVERIFY(filters.find(u"one"_s) == es());
    }

    void aPlaceThatCannotBeWrittenCostsOnlyTheMemory_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("below a device") << u"/dev/null/quillon.conf"_s;
        QTest::newRow("a directory") << m_directory.path();
        QTest::newRow("none") << QString();
    }

    void aPlaceThatCannotBeWrittenCostsOnlyTheMemory()
    {
        QFETCH(QString, path);
        KeptFilters filters(path);
        QVERIFY(filters.save(u"one"_s, es()));
        QVERIFY(filters.find(u"one"_s) == es());
        QVERIFY(KeptFilters(path).all().empty());
    }

    void haveAnEnd()
    {
        KeptFilters filters;
        for (std::size_t i = 0; i < KeptFilters::most; ++i) {
            QVERIFY(filters.save(QString::number(i), {}));
        }
        QVERIFY(!filters.save(u"more"_s, {}));
        QVERIFY(filters.save(u"7"_s, es()));
        QCOMPARE(filters.all().size(), KeptFilters::most);
    }

private:
    QTemporaryDir m_directory;
    QString m_path;
    int m_number = 0;
};

QTEST_GUILESS_MAIN(TestKeptFilters)
#include "tst_keptfilters.moc"
