#include "ui/problemlabel.h"
#include "ui/problemwatch.h"

#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;
using namespace quillon;

namespace {

const QString separator =
    u"\"|\" separates the fields of the file: what follows would become the next field"_s;

// A form with a field of each kind of widget.
struct Form
{
    QWidget window;
    QLineEdit *freq = new QLineEdit;
    QLineEdit *piCode = new QLineEdit;
    QPlainTextEdit *notes = new QPlainTextEdit;
    QComboBox *country = new QComboBox;
    ProblemLabel *label = new ProblemLabel;

    Form()
    {
        country->setEditable(true);
        label->setWordWrap(true);
        auto *layout = new QVBoxLayout(&window);
        for (QWidget *widget : std::initializer_list<QWidget *> {freq, piCode, notes, country, label}) {
            layout->addWidget(widget);
        }
        watchForProblems(*label, CodePage(1252),
            {{freq, FieldKind::Freq}, {piCode, FieldKind::PiCode}, {notes, FieldKind::Notes},
                {country, FieldKind::PlainText}});
        window.show();
    }
    [[nodiscard]] static bool isFramed(const QWidget *field)
    {
        const auto *frame = field->findChild<QWidget *>(u"problemFrame"_s);
        return frame && frame->isVisible() && frame->geometry() == field->rect();
    }
    [[nodiscard]] QList<bool> framed() const
    {
        return {isFramed(freq), isFramed(piCode), isFramed(notes), isFramed(country)};
    }
};

} // namespace

class TestProblemWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhileItIsTyped()
    {
        Form form;
        QCOMPARE(form.label->text(), QString());
        QTest::keyClicks(form.freq, u"98"_s);
        QCOMPARE(form.label->text(), QString());
        QTest::keyClick(form.freq, '|');
        QCOMPARE(form.label->text(), separator);
        QCOMPARE(form.framed(), QList({true, false, false, false}));
        QCOMPARE(form.freq->text(), u"98|"_s);
        QTest::keyClick(form.freq, Qt::Key_Backspace);
        QCOMPARE(form.label->text(), QString());
        QCOMPARE(form.framed(), QList({false, false, false, false}));
    }

    void noticesTextsThatTheProgramSets()
    {
        Form form;
        form.freq->setText(u"1000"_s);
        QCOMPARE(form.label->text(), u"Frequency is outside 64 to 108 MHz"_s);
        form.freq->clear();
        form.notes->setPlainText(u"a CRLF b"_s);
        QCOMPARE(form.label->text(), u"\"CRLF\" becomes a line break in the file"_s);
        QCOMPARE(form.framed(), QList({false, false, true, false}));
        form.notes->clear();
        form.country->setEditText(u"ł"_s);
        QCOMPARE(form.label->text(), u"ł is stored as l"_s);
        QCOMPARE(form.framed(), QList({false, false, false, true}));
        form.country->addItem(u"😀"_s);
        form.country->setCurrentIndex(0);
        QCOMPARE(form.label->text(), u"😀 is stored as ?"_s);
        form.country->setCurrentIndex(-1);
        QCOMPARE(form.label->text(), QString());
    }

    void tellsWhatStandsThereAlready()
    {
        QLineEdit field(u"X|"_s);
        ProblemLabel label;
        watchForProblems(label, CodePage(), {{&field, FieldKind::PlainText}});
        QCOMPARE(label.text(), separator);
    }

    void tellsEachProblemOnce()
    {
        Form form;
        form.country->setEditText(u"|"_s);
        form.notes->setPlainText(u"|"_s);
        form.freq->setText(u"FM"_s);
        QCOMPARE(form.label->text(), u"Frequency is not a number: 98.5 is one; "_s + separator);
        QCOMPARE(form.framed(), QList({true, false, true, true}));
    }

    void tellsAssistiveTools()
    {
        Form form;
        form.piCode->setText(u"X"_s);
        const QString problem = u"PI code is not four hexadecimal digits"_s;
        QCOMPARE(form.piCode->accessibleDescription(), problem);
        QCOMPARE(form.label->accessibleName(), u"Problem: "_s + problem);
        QCOMPARE(form.label->textFormat(), Qt::PlainText);
        form.piCode->setText(u"D3C3"_s);
        QCOMPARE(form.piCode->accessibleDescription(), QString());
        QCOMPARE(form.label->accessibleName(), u"No problem"_s);
    }

    void theFrameIsSeenOnEveryColourAndLetsClicksThrough_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::newRow("white") << QColor(Qt::white);
        QTest::newRow("yellow") << QColor(255, 255, 0);
        QTest::newRow("dark") << QColor(0x2d, 0x2d, 0x2d);
        QTest::newRow("black") << QColor(Qt::black);
    }

    void theFrameIsSeenOnEveryColourAndLetsClicksThrough()
    {
        QFETCH(QColor, base);
        Form form;
        QPalette palette;
        palette.setColor(QPalette::Base, base);
        form.freq->setPalette(palette);
        form.freq->setText(u"1"_s);
        const QImage image = form.freq->grab().toImage();
        const QColor frame = image.pixelColor(image.width() / 2, 0);
        QCOMPARE(frame, problemColour(base));
        QVERIFY(qAbs(qGray(frame.rgb()) - qGray(base.rgb())) > 100);
        QVERIFY(QTest::qWaitForWindowActive(&form.window));
        const QPoint edge(form.freq->width() / 2, 1);
        QCOMPARE(form.window.childAt(form.freq->mapTo(&form.window, edge)), form.freq);
    }

    void theFrameFollowsTheField()
    {
        Form form;
        form.freq->setText(u"1"_s);
        form.window.resize(form.window.width() + 200, form.window.height());
        QCoreApplication::processEvents();
        QVERIFY(Form::isFramed(form.freq));
    }

    void nothingMovesForOneLineAndALongTextTakesItsRoom()
    {
        Form form;
        form.window.resize(700, 300);
        QCoreApplication::processEvents();
        const QRect before = form.country->geometry();
        form.freq->setText(u"1"_s);
        QCoreApplication::processEvents();
        QCOMPARE(form.country->geometry(), before);
        form.window.resize(300, 300);
        form.piCode->setText(u"X"_s);
        form.notes->setPlainText(u"|"_s);
        form.country->setEditText(u"ł"_s);
        QCoreApplication::processEvents();
        QVERIFY(form.label->height() >= form.label->heightForWidth(form.label->width()));
    }
};

QTEST_MAIN(TestProblemWatch)
#include "tst_problemwatch.moc"
