#include "ui/scrolledpage.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace quillon;

namespace {

// A window of a text that takes several lines and a field above its buttons.
struct Window : QWidget
{
    Window()
    {
        text->setWordWrap(true);
        layout->addWidget(text);
        layout->addWidget(field);
        layout->addWidget(ok);
        say(30);
        page = new ScrolledPage(*layout);
    }

    void say(int times) const { text->setText(u"some words "_s.repeated(times)); }

    QVBoxLayout *layout = new QVBoxLayout(this);
    QLabel *text = new QLabel;
    QLineEdit *field = new QLineEdit;
    QPushButton *ok = new QPushButton(u"OK"_s);
    ScrolledPage *page = nullptr;
};

} // namespace

/// The rows of a window that scroll where the screen is too low.
class TestScrolledPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowGrowsWithItsPage();
    void theButtonsStayInViewOnALowScreen();
};

void TestScrolledPage::theWindowGrowsWithItsPage()
{
    Window window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.page->verticalScrollBar()->maximum(), 0);
    const QSize before = window.size();
    window.say(60);
    window.page->fitWindow();
    QVERIFY(window.height() > before.height());
    QTRY_COMPARE(window.page->verticalScrollBar()->maximum(), 0);
    QCOMPARE(window.page->height(), window.page->sizeHint().height());
    // What its widest row needs it gets, too.
    window.field->setMinimumWidth(2 * before.width());
    window.page->fitWindow();
    QTRY_VERIFY(window.width() > 2 * before.width());
    QTRY_COMPARE(window.page->verticalScrollBar()->maximum(), 0);
}

void TestScrolledPage::theButtonsStayInViewOnALowScreen()
{
    Window window;
    window.say(10'000);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.height() <= window.screen()->availableSize().height());
    QVERIFY(window.page->verticalScrollBar()->maximum() > 0);
    QVERIFY(window.rect().contains(window.ok->geometry()));
    QVERIFY(!window.page->geometry().intersects(window.ok->geometry()));
}

QTEST_MAIN(TestScrolledPage)
#include "tst_scrolledpage.moc"
