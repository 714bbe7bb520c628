#include "platform/regional.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestRegional : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char *name : {"QUILLON_CODEPAGE", "LC_ALL", "LC_TIME", "LC_NUMERIC", "LC_CTYPE", "LANG"}) {
            qunsetenv(name);
        }
    }

    void monthNamesOfTheLanguage_data()
    {
        QTest::addColumn<QByteArray>("lang");
        QTest::addColumn<QStringList>("abbreviated");
        QTest::addColumn<QStringList>("full");
        const QStringList english {u"Jan"_s, u"Feb"_s, u"Mar"_s, u"Apr"_s, u"May"_s, u"Jun"_s, u"Jul"_s,
            u"Aug"_s, u"Sep"_s, u"Oct"_s, u"Nov"_s, u"Dec"_s};
        const QStringList englishFull {u"January"_s, u"February"_s, u"March"_s, u"April"_s, u"May"_s,
            u"June"_s, u"July"_s, u"August"_s, u"September"_s, u"October"_s, u"November"_s, u"December"_s};
        QTest::newRow("none") << ""_ba << english << englishFull;
        QTest::newRow("C") << "C"_ba << english << englishFull;
        QTest::newRow("English") << "en_US.UTF-8"_ba << english << englishFull;
        QTest::newRow("German") << "de_DE.UTF-8"_ba
                                << QStringList {u"Jan"_s, u"Feb"_s, u"Mär"_s, u"Apr"_s, u"Mai"_s, u"Jun"_s,
                                       u"Jul"_s, u"Aug"_s, u"Sep"_s, u"Okt"_s, u"Nov"_s, u"Dez"_s}
                                << QStringList {u"Januar"_s, u"Februar"_s, u"März"_s, u"April"_s, u"Mai"_s,
                                       u"Juni"_s, u"Juli"_s, u"August"_s, u"September"_s, u"Oktober"_s,
                                       u"November"_s, u"Dezember"_s};
    }

    void monthNamesOfTheLanguage()
    {
        QFETCH(QByteArray, lang);
        QFETCH(QStringList, abbreviated);
        QFETCH(QStringList, full);
        qputenv("LANG", lang);
        const MonthNames months = Regional::fromEnvironment().months;
        QCOMPARE(QStringList(months.abbreviated.begin(), months.abbreviated.end()), abbreviated);
        QCOMPARE(QStringList(months.full.begin(), months.full.end()), full);
    }

    void abbreviationsHaveNoFullStopAndAreDistinct()
    {
        for (const char *lang : {"en_GB", "de_DE", "de_AT", "fr_FR", "es_ES", "nl_NL", "nb_NO", "da_DK",
                 "sv_SE", "fi_FI", "it_IT", "pt_PT", "pl_PL", "cs_CZ", "ru_RU", "el_GR", "tr_TR", "hu_HU"}) {
            qputenv("LANG", lang);
            const MonthNames months = Regional::fromEnvironment().months;
            QStringList names(months.abbreviated.begin(), months.abbreviated.end());
            for (const QString &name : names) {
                QVERIFY2(!name.isEmpty() && !name.contains(u'.'), lang);
            }
            QCOMPARE(names.removeDuplicates(), 0);
        }
    }

    void eachPartFollowsItsOwnVariable()
    {
        qputenv("LANG", "pl_PL.UTF-8");
        qputenv("LC_TIME", "en_GB.UTF-8");
        qputenv("LC_CTYPE", "tr_TR.UTF-8");
        const Regional regional = Regional::fromEnvironment();
        QCOMPARE(regional.months.full[0], u"January"_s);
        QCOMPARE(regional.codePage.number(), 1254);
        qputenv("LC_ALL", "de_DE.UTF-8");
        QCOMPARE(Regional::fromEnvironment().months.full[0], u"Januar"_s);
        QCOMPARE(Regional::fromEnvironment().codePage.number(), 1252);
    }
};

QTEST_GUILESS_MAIN(TestRegional)
#include "tst_regional.moc"
