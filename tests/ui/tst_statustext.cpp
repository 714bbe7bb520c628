#include "ui/statustext.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

using namespace quillon;
using namespace Qt::StringLiterals;

/// A long or hostile status leaves the window as it is and can be read whole.
class TestStatusText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatFitsIsShownAsItIs();
    void whatIsTooLongEndsInDots();
    void ofManyLinesTheFirstIsShown();
    void markupIsText();
    void itAsksForNoRoom();
    void theTipTellsWhatIsCutOff_data();
    void theTipTellsWhatIsCutOff();

private:
    static void askForTip(StatusText &text);
};

void TestStatusText::askForTip(StatusText &text)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), text.mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(&text, &event);
}

void TestStatusText::whatFitsIsShownAsItIs()
{
    StatusText text;
    text.resize(400, 20);
    text.setText(u"FMList Search: 2 matches"_s);
    QCOMPARE(text.shownText(), u"FMList Search: 2 matches"_s);
}

void TestStatusText::whatIsTooLongEndsInDots()
{
    StatusText text;
    text.resize(200, 20);
    text.setText(u"The logbook "_s + QString(500, u'x'));
    QVERIFY(text.shownText().startsWith(u"The logbook x"_s));
    QVERIFY(text.shownText().endsWith(u'\u2026'));
    QVERIFY(text.fontMetrics().horizontalAdvance(text.shownText()) <= 200);
}

void TestStatusText::ofManyLinesTheFirstIsShown()
{
    StatusText text;
    text.resize(400, 20);
    text.setText(u" \r\none\r\ntwo\r\n"_s);
    QCOMPARE(text.shownText(), u"one \u2026"_s);
}

void TestStatusText::markupIsText()
{
    StatusText text;
    text.resize(400, 20);
    text.setText(u"<b>bold</b>"_s);
    QCOMPARE(text.shownText(), u"<b>bold</b>"_s);
    QCOMPARE(text.textFormat(), Qt::PlainText);
}

void TestStatusText::itAsksForNoRoom()
{
    StatusText text;
    text.setText(QString(500, u'x') + u"\n\n\n"_s);
    QCOMPARE(text.minimumSizeHint(), QSize(1, text.fontMetrics().height()));
}

void TestStatusText::theTipTellsWhatIsCutOff_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QString>("tip");
    QTest::newRow("short") << u"one"_s << QString();
    QTest::newRow("long") << u"x "_s + QString(90, u'x') << u"x "_s + QString(90, u'x');
    QTest::newRow("two lines") << u"one\ntwo"_s << u"one\ntwo"_s;
}

void TestStatusText::theTipTellsWhatIsCutOff()
{
    QFETCH(QString, status);
    QFETCH(QString, tip);
    StatusText text;
    text.resize(150, 20);
    text.setText(status);
    text.show();
    QVERIFY(QTest::qWaitForWindowExposed(&text));
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    askForTip(text);
    QCOMPARE(QToolTip::isVisible() ? QToolTip::text() : QString(), tip);
}

QTEST_MAIN(TestStatusText)
#include "tst_statustext.moc"
