#include "txdb/countries.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestCountries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheLines_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("countries");
        QTest::newRow("empty") << ""_ba << QStringList();
        QTest::newRow("order of the file")
            << "D\r\nAUT\r\nALB\r\n"_ba << QStringList {u"D"_s, u"AUT"_s, u"ALB"_s};
        QTest::newRow("line feeds") << "D\nAUT"_ba << QStringList {u"D"_s, u"AUT"_s};
        QTest::newRow("empty lines") << "\r\n\r\nD\r\n\r\nAUT\r\n\r\n"_ba << QStringList {u"D"_s, u"AUT"_s};
        QTest::newRow("unchanged") << " D \r\n \r\nd|x\r\n"_ba << QStringList {u" D "_s, u" "_s, u"d|x"_s};
        QTest::newRow("duplicates") << "D\r\nD\r\n"_ba << QStringList {u"D"_s, u"D"_s};
        QTest::newRow("code page") << "\xD6sterreich\r\n"_ba << QStringList {u"Österreich"_s};
    }

    void readsTheLines()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, countries);
        QCOMPARE(readCountries(file, CodePage()), countries);
    }
};

QTEST_GUILESS_MAIN(TestCountries)
#include "tst_countries.moc"
