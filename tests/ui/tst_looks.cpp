#include "support/dialogs.h"
#include "ui/looks.h"
#include "ui/messages.h"
#include "ui/resultlist.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTest>
#include <QVBoxLayout>

#include <memory>
#include <tuple>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

QPalette shade(QRgb window, QRgb base, QRgb text, QRgb quiet)
{
    QPalette palette {QColor(window), QColor(window)};
    palette.setColor(QPalette::Base, QColor(base));
    palette.setColor(QPalette::AlternateBase, QColor(base));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(text));
        palette.setColor(QPalette::Disabled, role, QColor(quiet));
    }
    return palette;
}

const QPalette light = shade(0xffefefef, 0xffffffff, 0xff000000, 0xffbebebe);
const QPalette dark = shade(0xff2b2d30, 0xff1f2123, 0xffe4e6e8, 0xff5a5d61);

int pixelsOf(QWidget &widget, const QColor &colour)
{
    const QImage image = widget.grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixelColor(x, y) == colour ? 1 : 0;
        }
    }
    return count;
}

// The greatest difference of a colour's part, 0 to 255, in any pixel; 255 for pictures of two sizes.
int difference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size()) {
        return 255;
    }
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor left = one.pixelColor(x, y);
            const QColor right = other.pixelColor(x, y);
            greatest = std::max({greatest, std::abs(left.red() - right.red()),
                std::abs(left.green() - right.green()), std::abs(left.blue() - right.blue())});
        }
    }
    return greatest;
}

} // namespace

/// What the program adds to the style of the desktop.
class TestLooks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { installLooks(); }
    void cleanup() { QApplication::setPalette(QPalette()); }
    void aKeptScrollBarLooksAsTheStyleDrawsIt();
    void keptFieldsAndCombosLookAsTheStyleDrawsThem_data() { shades(); }
    void keptFieldsAndCombosLookAsTheStyleDrawsThem();
    void keptFramesOfGroupsLookAsTheStyleDrawsThem_data() { shades(); }
    void keptFramesOfGroupsLookAsTheStyleDrawsThem();
    void contrastIsThatOfTheGuidelines();
    void textsOfDisabledControlsAreReadable_data() { shades(); }
    void textsOfDisabledControlsAreReadable();
    void disabledStaysQuieterThanEnabled();
    void theFocusIsSeenOnYellow_data() { shades(); }
    void theFocusIsSeenOnYellow();
    void whatHasTheFocusHasARing_data();
    void whatHasTheFocusHasARing();
    void titlesOfBoxesAreNotCutOff();

private:
    static void shades();
};

void TestLooks::shades()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("the desktop's") << QPalette();
    QTest::newRow("light") << light;
    QTest::newRow("dark") << dark;
}

void TestLooks::aKeptScrollBarLooksAsTheStyleDrawsIt()
{
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(u"fusion"_s));
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        QScrollBar bar(orientation);
        bar.resize(orientation == Qt::Horizontal ? QSize(300, 16) : QSize(16, 300));
        for (const auto &[maximum, page, value, enabled] :
            {std::tuple(1000, 100, 0, true), {1000, 100, 500, true}, {1000, 300, 500, true},
                {1000, 100, 1000, true}, {0, 100, 0, true}, {1000, 100, 500, false}}) {
            bar.setRange(0, maximum);
            bar.setPageStep(page);
            bar.setValue(value);
            bar.setEnabled(enabled);
            bar.setStyle(fusion.get());
            const QImage expected = bar.grab().toImage();
            bar.setStyle(QApplication::style());
            QCOMPARE(bar.grab().toImage(), expected);
            QCOMPARE(bar.grab().toImage(), expected);
        }
    }
}

void TestLooks::keptFieldsAndCombosLookAsTheStyleDrawsThem()
{
    constexpr int rounding = 2; // of what shines through twice
    QFETCH(QPalette, palette);
    QApplication::setPalette(palette);
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(u"fusion"_s));
    QLineEdit field(u"90.3"_s);
    QComboBox typed;
    typed.setEditable(true);
    typed.setEditText(u"Es"_s);
    QComboBox chosen;
    chosen.addItem(u"Tropo"_s);
    const QPalette plain = QApplication::palette();
    QPalette yellow = plain;
    yellow.setColor(QPalette::Base, Qt::yellow);
    yellow.setColor(QPalette::Button, Qt::yellow);
    for (QWidget *control : std::initializer_list<QWidget *> {&field, &typed, &chosen}) {
        for (const auto &[size, colours, enabled, framed] : {std::tuple(QSize(120, 24), plain, true, true),
                 {QSize(120, 24), plain, false, true}, {QSize(120, 24), yellow, true, true},
                 {QSize(120, 24), yellow, false, true}, {QSize(121, 24), yellow, true, true},
                 {QSize(121, 24), plain, true, false}, {QSize(120, 24), plain, true, true}}) {
            field.setFrame(framed);
            typed.setFrame(framed);
            control->resize(size);
            control->setPalette(colours);
            control->setEnabled(enabled);
            control->setStyle(fusion.get());
            const QImage expected = control->grab().toImage();
            control->setStyle(QApplication::style());
            QVERIFY(difference(control->grab().toImage(), expected) <= rounding);
            QVERIFY(difference(control->grab().toImage(), expected) <= rounding);
        }
    }
}

void TestLooks::keptFramesOfGroupsLookAsTheStyleDrawsThem()
{
    constexpr int rounding = 2;
    QFETCH(QPalette, palette);
    QApplication::setPalette(palette);
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(u"fusion"_s));
    QGroupBox box;
    for (const auto &[title, points, enabled, flat, ticked] :
        {std::tuple(u"Transmitter"_s, 10, true, false, false), {u"Reception"_s, 10, true, false, false},
            {u"Reception"_s, 20, true, false, false}, {QString(), 10, true, false, false},
            {u"Reception"_s, 10, false, false, false}, {u"Reception"_s, 10, true, true, false},
            {u"Reception"_s, 10, true, false, true}}) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        box.setTitle(title);
        box.setFont(font);
        box.setEnabled(enabled);
        box.setFlat(flat);
        box.setCheckable(ticked);
        box.resize(200, 150);
        box.setStyle(fusion.get());
        const QImage expected = box.grab().toImage();
        box.setStyle(QApplication::style());
        QVERIFY(difference(box.grab().toImage(), expected) <= rounding);
        QVERIFY(difference(box.grab().toImage(), expected) <= rounding);
    }
}

void TestLooks::contrastIsThatOfTheGuidelines()
{
    QCOMPARE(contrastOf(Qt::white, Qt::black), 21.0);
    QCOMPARE(contrastOf(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrastOf(Qt::red, Qt::red), 1.0);
    QVERIFY(std::abs(contrastOf(QColor(0x77, 0x77, 0x77), Qt::white) - 4.48) < 0.01);
}

void TestLooks::textsOfDisabledControlsAreReadable()
{
    QFETCH(QPalette, palette);
    QApplication::setPalette(palette);
    const QPalette shown = QApplication::palette();
    const auto contrast = [&](QPalette::ColorRole text, QPalette::ColorRole behind) {
        return contrastOf(shown.color(QPalette::Disabled, text), shown.color(QPalette::Disabled, behind));
    };
    QVERIFY(contrast(QPalette::Text, QPalette::Base) >= readableContrast);
    QVERIFY(contrast(QPalette::WindowText, QPalette::Window) >= readableContrast);
    QVERIFY(contrast(QPalette::ButtonText, QPalette::Button) >= readableContrast);

    // As they are painted: the darkest and the lightest of a field's inside.
    QLineEdit field(u"MMMMMMMMMMMMMMMM"_s);
    field.setEnabled(false);
    field.resize(200, 30);
    const QImage image = field.grab(field.rect().adjusted(4, 4, -4, -4)).toImage();
    QColor darkest(Qt::white);
    QColor lightest(Qt::black);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            darkest = pixel.lightness() < darkest.lightness() ? pixel : darkest;
            lightest = pixel.lightness() > lightest.lightness() ? pixel : lightest;
        }
    }
    QVERIFY(contrastOf(darkest, lightest) >= readableContrast);
}

void TestLooks::disabledStaysQuieterThanEnabled()
{
    for (const QPalette &palette : {light, dark}) {
        const QPalette mended = withReadableTexts(palette);
        QCOMPARE(withReadableTexts(mended), mended);
        QCOMPARE(
            mended.color(QPalette::Active, QPalette::Text), palette.color(QPalette::Active, QPalette::Text));
        const QColor base = palette.color(QPalette::Disabled, QPalette::Base);
        QVERIFY(contrastOf(mended.color(QPalette::Disabled, QPalette::Text), base)
            < 0.7 * contrastOf(mended.color(QPalette::Active, QPalette::Text), base));
    }
}

void TestLooks::theFocusIsSeenOnYellow()
{
    QFETCH(QPalette, palette);
    QApplication::setPalette(palette);
    const QPalette shown = QApplication::palette();
    constexpr double seen = 3; // WCAG 2.1, 1.4.11
    const QColor ring = focusColour(shown);
    QVERIFY(contrastOf(ring, QColor(255, 255, 0)) >= seen);
    QVERIFY(contrastOf(ring, shown.color(QPalette::Window)) >= seen);
    QVERIFY(contrastOf(ring, shown.color(QPalette::Base)) >= seen);
}

void TestLooks::whatHasTheFocusHasARing_data()
{
    QTest::addColumn<QString>("control");
    for (const char *control : {"field", "notes", "combo", "editable combo", "list"}) {
        QTest::newRow(control) << QString::fromLatin1(control);
    }
}

void TestLooks::whatHasTheFocusHasARing()
{
    QFETCH(QString, control);
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    const QMap<QString, QWidget *> controls {{u"field"_s, new QLineEdit(u"RNE_1"_s)},
        {u"notes"_s, new QPlainTextEdit}, {u"combo"_s, new QComboBox}, {u"editable combo"_s, new QComboBox},
        {u"list"_s, new ResultList}};
    qobject_cast<QComboBox *>(controls[u"editable combo"_s])->setEditable(true);
    for (QWidget *each : controls) {
        layout->addWidget(each);
        QPalette yellow;
        yellow.setColor(QPalette::Base, Qt::yellow);
        yellow.setColor(QPalette::Button, Qt::yellow);
        each->setPalette(yellow);
    }
    auto *other = new QPushButton;
    layout->addWidget(other);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    const QColor ring = focusColour(QApplication::palette());
    QWidget &widget = *controls[control];
    QCOMPARE(pixelsOf(widget, ring), 0);
    widget.setFocus();
    // Two pixels wide on its four sides, but for the rounded corners.
    QVERIFY(pixelsOf(widget, ring) > 3 * (widget.width() + widget.height()));
    other->setFocus();
    QCOMPARE(pixelsOf(widget, ring), 0);
}

void TestLooks::titlesOfBoxesAreNotCutOff()
{
    const QString title = u"Import all the receptions of the whole long day of yesterday?"_s;
    const int wanted = QFontMetrics(QApplication::font()).horizontalAdvance(title);
    DialogAnswers answers;
    int width = 0;
    const auto measure = [&](QWidget *box) {
        width = box->width();
        box->close();
    };
    answers.doing(measure);
    showMessage(nullptr, u"Yes"_s, title);
    QVERIFY2(width > wanted + 60, qPrintable(QString::number(width)));
    width = 0;
    answers.doing(measure);
    (void)askYesNo(nullptr, u"So?"_s, title);
    QVERIFY2(width > wanted + 60, qPrintable(QString::number(width)));
    width = 0;
    answers.doing(measure);
    (void)inputBox(nullptr, u"When?"_s, title);
    QVERIFY2(width > wanted + 60, qPrintable(QString::number(width)));
}

QTEST_MAIN(TestLooks)
#include "tst_looks.moc"
