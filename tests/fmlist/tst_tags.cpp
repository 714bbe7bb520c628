#include "fmlist/tags.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setTagValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("replaced") << u"fml=multi#"_s << u"fml=sent#"_s;
        QTest::newRow("empty") << u""_s << u"fml=sent#"_s;
        QTest::newRow("last tag without its closing sign is lost") << u"fml=none"_s << u"fml=sent#"_s;
        QTest::newRow("other tags stay") << u"a=1#fml=none#b=2#"_s << u"a=1#fml=sent#b=2#"_s;
        QTest::newRow("added at the end") << u"a=1#b=2#"_s << u"a=1#b=2#fml=sent#"_s;
        QTest::newRow("rest after the last sign dropped") << u"a=1#rest"_s << u"a=1#fml=sent#"_s;
        QTest::newRow("every match") << u"fml=none#x#fml=multi#"_s << u"fml=sent#x#fml=sent#"_s;
        QTest::newRow("anywhere in the tag") << u"xfml=none y#"_s << u"fml=sent#"_s;
        QTest::newRow("empty tags stay") << u"##"_s << u"##fml=sent#"_s;
        QTest::newRow("key without a value is no match") << u"fml#"_s << u"fml#fml=sent#"_s;
        QTest::newRow("case counts") << u"FML=none#"_s << u"FML=none#fml=sent#"_s;
    }

    void setTagValue()
    {
        QFETCH(QString, text);
        QTEST(SetTagValue(text, u"fml", u"sent"), "expected");
    }
};

QTEST_GUILESS_MAIN(TestTags)
#include "tst_tags.moc"
