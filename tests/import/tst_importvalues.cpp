#include "import/gzip.h"
#include "import/importvalues.h"
#include "platform/runtimeerror.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestImportValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersWithSeparators_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("decimalComma");
        QTest::addColumn<std::optional<QString>>("number");
        const auto row = [](const char *what, const QString &text, bool comma,
                             std::optional<QString> number) {
            QTest::newRow(what) << text << comma << std::move(number);
        };
        row("plain", u"98.5"_s, false, u"98.5"_s);
        row("comma anyway", u"98,5"_s, false, u"98.5"_s);
        row("point anyway", u"98.5"_s, true, u"98.5"_s);
        row("thousands", u"1,234.5"_s, false, u"1234.5"_s);
        row("thousands with a decimal comma", u"1.234,5"_s, true, u"1234.5"_s);
        row("blanks around thousands", u" 1,234.5 "_s, false, u"1234.5"_s);
        row("sign", u"-1,234"_s, false, u"-1234"_s);
        row("no thousands", u"12,34.5"_s, false, std::nullopt);
        row("no number", u"abc"_s, false, std::nullopt);
        row("empty", QString(), false, std::nullopt);
    }

    void numbersWithSeparators()
    {
        QFETCH(QString, text);
        QFETCH(bool, decimalComma);
        QFETCH(std::optional<QString>, number);
        QCOMPARE(plainNumber(text, decimalComma), number);
    }

    void onlyGzipIsUnpacked()
    {
        // The same packing without the head of a gzip file.
        const QByteArray zlib = qCompress("reception").sliced(4);
        QVERIFY(!isGzip(zlib));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, static_cast<void>(gunzipped(zlib, 1000)));
    }
};

QTEST_GUILESS_MAIN(TestImportValues)
#include "tst_importvalues.moc"
