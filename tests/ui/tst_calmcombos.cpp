#include "support/wheel.h"
#include "ui/calmcombos.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int itemCount = 40;

// A field and two combos in a page that scrolls.
class Window
{
public:
    Window()
    {
        auto *page = new QWidget;
        page->setMinimumHeight(2000);
        auto *layout = new QVBoxLayout(page);
        layout->addWidget(field = new QLineEdit);
        layout->addWidget(plain = new QComboBox);
        layout->addWidget(editable = new QComboBox);
        layout->addStretch();
        editable->setEditable(true);
        editable->setCompleter(nullptr);
        for (QComboBox *combo : {plain, editable}) {
            for (int i = 0; i < itemCount; ++i) {
                combo->addItem(u"Item %1"_s.arg(i));
            }
            combo->setCurrentIndex(5);
        }
        area.setWidget(page);
        area.setWidgetResizable(true);
        keepCombosCalm(area, [this] { return atRest; });
        area.resize(300, 300);
        area.show();
        (void)QTest::qWaitForWindowActive(&area);
        field->setFocus();
    }

    [[nodiscard]] int scrolled() const { return area.verticalScrollBar()->value(); }
    [[nodiscard]] QString highlighted(QComboBox &combo) const
    {
        combo.showPopup();
        const QString text = combo.view()->currentIndex().data().toString();
        const bool seen = combo.view()->viewport()->rect().intersects(
            combo.view()->visualRect(combo.view()->currentIndex()));
        combo.hidePopup();
        return text.isEmpty() || seen ? text : u"not in view"_s;
    }

    bool atRest = false;
    QScrollArea area;
    QLineEdit *field = nullptr;
    QComboBox *plain = nullptr;
    QComboBox *editable = nullptr;
};

} // namespace

class TestCalmCombos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWheelChangesNoComboWithoutTheFocus();
    void theWheelChangesTheComboWithTheFocus();
    void theWheelChangesNothingAtRest();
    void theWheelChangesAndScrollsNothingOverADisabledCombo();
    void theListOpensAtTheText_data();
    void theListOpensAtTheText();
    void openingTheListChangesNothing();
    void theArrowsBeginAtTheText_data();
    void theArrowsBeginAtTheText();
    void aLetterStaysWhereItIsTyped();
    void theWheelBeginsAtTheText();
};

void TestCalmCombos::theWheelChangesNoComboWithoutTheFocus()
{
    const Window window;
    for (QComboBox *combo : {window.plain, window.editable}) {
        turnWheel(*combo, -1);
        turnWheel(*combo, -1);
        QCOMPARE(combo->currentIndex(), 5);
        QCOMPARE(combo->currentText(), u"Item 5"_s);
        QVERIFY(window.field->hasFocus());
        QCOMPARE(window.scrolled(), 0);
    }
}

void TestCalmCombos::theWheelChangesTheComboWithTheFocus()
{
    const Window window;
    for (QComboBox *combo : {window.plain, window.editable}) {
        combo->setFocus();
        turnWheel(*combo, -1);
        QCOMPARE(combo->currentText(), u"Item 6"_s);
        QCOMPARE(window.scrolled(), 0);
    }
}

void TestCalmCombos::theWheelChangesNothingAtRest()
{
    Window window;
    window.atRest = true;
    for (QComboBox *combo : {window.plain, window.editable}) {
        combo->setFocus();
        turnWheel(*combo, -1);
        QCOMPARE(combo->currentText(), u"Item 5"_s);
        QCOMPARE(window.scrolled(), 0);
    }
}

void TestCalmCombos::theWheelChangesAndScrollsNothingOverADisabledCombo()
{
    const Window window;
    for (QComboBox *combo : {window.plain, window.editable}) {
        combo->setEnabled(false);
        turnWheel(*combo, -1);
        QCOMPARE(combo->currentText(), u"Item 5"_s);
        QCOMPARE(window.scrolled(), 0);
    }
}

void TestCalmCombos::theListOpensAtTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("highlighted");
    QTest::newRow("the same") << u"Item 30"_s << u"Item 30"_s;
    QTest::newRow("another case") << u"iTEM 30"_s << u"Item 30"_s;
    QTest::newRow("a beginning") << u"Item 3"_s << u"Item 3"_s;
    QTest::newRow("a beginning only") << u"It"_s << u"Item 0"_s;
    QTest::newRow("none") << u"Sc"_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void TestCalmCombos::theListOpensAtTheText()
{
    QFETCH(QString, text);
    const Window window;
    window.editable->setEditText(text);
    QTEST(window.highlighted(*window.editable), "highlighted");
    QCOMPARE(window.highlighted(*window.plain), u"Item 5"_s);
}

void TestCalmCombos::openingTheListChangesNothing()
{
    const Window window;
    window.editable->setEditText(u"iTEM 30"_s);
    const QSignalSpy index(window.editable, &QComboBox::currentIndexChanged);
    const QSignalSpy text(window.editable, &QComboBox::currentTextChanged);
    QCOMPARE(window.highlighted(*window.editable), u"Item 30"_s);
    QCOMPARE(index.size() + text.size(), 0);
    QCOMPARE(window.editable->currentText(), u"iTEM 30"_s);
}

void TestCalmCombos::theArrowsBeginAtTheText_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("next");
    QTest::newRow("down") << Qt::Key_Down << u"Item 30"_s << u"Item 31"_s;
    QTest::newRow("up") << Qt::Key_Up << u"Item 30"_s << u"Item 29"_s;
    QTest::newRow("page down") << Qt::Key_PageDown << u"Item 30"_s << u"Item 31"_s;
    QTest::newRow("page up") << Qt::Key_PageUp << u"Item 30"_s << u"Item 29"_s;
    QTest::newRow("no item") << Qt::Key_Down << u"Sc"_s << u"Item 0"_s;
}

void TestCalmCombos::theArrowsBeginAtTheText()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, text);
    const Window window;
    window.editable->setFocus();
    window.editable->setEditText(text);
    QTest::keyClick(window.editable, key);
    QTEST(window.editable->currentText(), "next");
}

void TestCalmCombos::aLetterStaysWhereItIsTyped()
{
    const Window window;
    window.editable->setFocus();
    window.editable->setEditText(u"Item 30"_s);
    QTest::keyClick(window.editable, Qt::Key_Home);
    QTest::keyClick(window.editable, Qt::Key_X);
    QTest::keyClick(window.editable, Qt::Key_Y);
    QCOMPARE(window.editable->currentText(), u"xyItem 30"_s);
}

void TestCalmCombos::theWheelBeginsAtTheText()
{
    const Window window;
    window.editable->setFocus();
    window.editable->setEditText(u"Item 30"_s);
    turnWheel(*window.editable, 1);
    QCOMPARE(window.editable->currentText(), u"Item 29"_s);
}

QTEST_MAIN(TestCalmCombos)
#include "tst_calmcombos.moc"
