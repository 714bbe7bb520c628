#include "core/linebreaks.h"
#include "core/typedfields.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestTypedFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFrequencyInItsUsualSpelling_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("usual");
        QTest::newRow("as it is") << u"87.6"_s << u"87.6"_s;
        QTest::newRow("comma") << u" 87,6 "_s << u"87.6"_s;
        QTest::newRow("needless zeros") << u"87.600"_s << u"87.6"_s;
        QTest::newRow("one decimal stays") << u"100.0"_s << u"100.0"_s;
        QTest::newRow("digits alone") << u"876"_s << u"87.6"_s;
        QTest::newRow("digits alone over 100") << u"1047"_s << u"104.7"_s;
        QTest::newRow("digits with zeros") << u"87600"_s << u"87.6"_s;
        QTest::newRow("lowest") << u"640"_s << u"64.0"_s;
        QTest::newRow("below it") << u"639"_s << u"639"_s;
        QTest::newRow("highest") << u"10800"_s << u"108.0"_s;
        QTest::newRow("beyond it") << u"10805"_s << u"10805"_s;
        QTest::newRow("whole megahertz") << u"98"_s << u"98"_s;
        QTest::newRow("too many digits") << u"8760000"_s << u"8760000"_s;
        QTest::newRow("too few") << u"8"_s << u"8"_s;
        QTest::newRow("no number") << u"87.6 MHz"_s << u"87.6 MHz"_s;
        QTest::newRow("lines") << u"87\n6"_s << withoutLineBreaks(u"87\n6"_s);
        QTest::newRow("empty") << QString() << QString();
    }

    void aFrequencyInItsUsualSpelling()
    {
        QFETCH(QString, typed);
        QTEST(usualFrequency(typed), "usual");
    }
};

QTEST_GUILESS_MAIN(TestTypedFields)
#include "tst_typedfields.moc"
