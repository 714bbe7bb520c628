#include "geo/ui/dialog.h"

#include "support/numericlocale.h"
#include "support/wheel.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

Settings homeAt(const QString &latitude, const QString &longitude)
{
    Settings settings;
    settings.homeLatitude = latitude;
    settings.homeLongitude = longitude;
    return settings;
}

// The converter, worked as a person does.
class Converter
{
public:
    explicit Converter(const Settings &settings = homeAt(u"0"_s, u"0"_s))
        : m_dialog(std::make_unique<Dialog>(settings))
    {
        m_dialog->show();
        (void)QTest::qWaitForWindowActive(m_dialog.get());
    }

    [[nodiscard]] Dialog &dialog() { return *m_dialog; }

    template<typename Control>
    [[nodiscard]] Control *find(const QString &name) const
    {
        return m_dialog->findChild<Control *>(name);
    }

    [[nodiscard]] QString text(const QString &name) const { return find<QLineEdit>(name)->text(); }
    [[nodiscard]] QString problem(const QString &name) const
    {
        return find<QLabel>(name + u"Problem"_s)->text();
    }

    void type(const QString &name, const QString &text) const
    {
        auto *field = find<QLineEdit>(name);
        field->setFocus();
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
    }

    void choose(const QString &name, const QString &hemisphere) const
    {
        auto *box = find<QComboBox>(name);
        box->setFocus();
        QTest::keyClicks(box, hemisphere);
    }

    void click(const QString &name) const { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    // Everything that the frames show.
    [[nodiscard]] QStringList shown() const
    {
        QStringList texts;
        for (const QString &name : {u"Text12"_s, u"Text9"_s, u"Text1"_s, u"Text2"_s, u"Text3"_s, u"Text4"_s,
                 u"Text5"_s, u"Text6"_s, u"Text7"_s}) {
            texts += text(name);
        }
        texts.insert(5, find<QComboBox>(u"Combo1"_s)->currentText());
        texts.insert(9, find<QComboBox>(u"Combo2"_s)->currentText());
        return texts;
    }

private:
    std::unique_ptr<Dialog> m_dialog;
};

} // namespace

class TestDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsCaptions()
    {
        Converter converter;
        QCOMPARE(converter.dialog().objectName(), u"Dialog"_s);
        QCOMPARE(converter.dialog().windowTitle(), u"Quillon - Converter"_s);
        QStringList frames;
        const auto boxes = converter.dialog().findChildren<QGroupBox *>();
        for (const QGroupBox *box : boxes) {
            frames += box->title();
        }
        QCOMPARE(
            frames, (QStringList {u"Decimal Degrees"_s, u"Degress, Minutes, Secounds"_s, u"Maidenhead"_s}));
        const auto caption = [&](const QString &name) {
            return converter.find<QPushButton>(name)->text().remove(u'&');
        };
        QCOMPARE(caption(u"Command1"_s), u"Convert"_s);
        QCOMPARE(caption(u"Command2"_s), u"Convert"_s);
        QCOMPARE(caption(u"Command3"_s), u"Convert"_s);
        QCOMPARE(caption(u"Command4"_s), u"Send to LogBook"_s);
        QCOMPARE(caption(u"CancelButton"_s), u"Close"_s);
        const auto hemispheres = [&](const QString &name) {
            const auto *box = converter.find<QComboBox>(name);
            return QStringList {box->itemText(0), box->itemText(1)};
        };
        QCOMPARE(hemispheres(u"Combo1"_s), (QStringList {u"N"_s, u"S"_s}));
        QCOMPARE(hemispheres(u"Combo2"_s), (QStringList {u"W"_s, u"E"_s}));
    }

    void everyControlCanBeReachedAndRead()
    {
        Converter converter;
        QStringList order;
        QStringList mnemonics;
        const auto widgets = converter.dialog().findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (widget->focusPolicy() != Qt::NoFocus) {
                QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
            }
            const QString text = widget->property("text").toString();
            if (const qsizetype at = text.indexOf(u'&'); at >= 0) {
                mnemonics += text[at + 1].toLower();
            }
        }
        QCOMPARE(mnemonics.size(), 10);
        QCOMPARE(mnemonics.removeDuplicates(), 0);
        converter.find<QLineEdit>(u"Text12"_s)->setFocus();
        do {
            order += converter.dialog().focusWidget()->objectName();
            QTest::keyClick(converter.dialog().focusWidget(), Qt::Key_Tab);
        } while (converter.dialog().focusWidget()->objectName() != u"Text12"_s && order.size() < 30);
        QCOMPARE(order.join(u' '),
            u"Text12 Text9 Command1 Command4 Text1 Text2 Text3 Combo1 Text4 Text5 Text6 Combo2 Command3 Text7 Command2 CancelButton"_s);
    }

    void opensWithTheHomeLocationOrASample_data()
    {
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<QStringList>("shown");
        const QStringList sample {u"50.0309"_s, u"11.8083"_s, u"50"_s, u"01"_s, u"85"_s, u"N"_s, u"011"_s,
            u"48"_s, u"49"_s, u"E"_s, u"JO50VA"_s};
        QTest::newRow("home") << u"51.5"_s << u"-0.1"_s
                              << QStringList {u"51.5"_s, u"-0.1"_s, u"51"_s, u"30"_s, u"00"_s, u"N"_s,
                                     u"000"_s, u"06"_s, u"00"_s, u"W"_s, u"IO91WM"_s};
        QTest::newRow("home with comma") << u"-5,25"_s << u"1,5"_s
                                         << QStringList {u"-5,25"_s, u"1,5"_s, u"5"_s, u"15"_s, u"00"_s,
                                                u"S"_s, u"001"_s, u"30"_s, u"00"_s, u"E"_s, u"JI04SS"_s};
        QTest::newRow("not set") << u"0"_s << u"0"_s << sample;
        QTest::newRow("half set") << u"51.5"_s << u"0"_s << sample;
        QTest::newRow("empty") << u""_s << u""_s << sample;
        QTest::newRow("words") << u"north"_s << u"1"_s << sample;
        QTest::newRow("off the globe") << u"95"_s << u"1"_s << sample;
    }

    void opensWithTheHomeLocationOrASample()
    {
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        const Converter converter(homeAt(latitude, longitude));
        QTEST(converter.shown(), "shown");
    }

    void convertsDecimalDegrees()
    {
        for (const char *locale : {"en_GB.UTF-8", "de_DE.UTF-8"}) {
            const test::NumericLocale numbers(locale);
            for (const QChar separator : {u'.', u','}) {
                const Converter converter;
                const QString latitude = u"48"_s + separator + u"3"_s;
                const QString longitude = u"-10"_s + separator + u"123456"_s;
                converter.type(u"Text12"_s, latitude);
                converter.type(u"Text9"_s, longitude);
                converter.click(u"Command1"_s);
                QCOMPARE(converter.shown(),
                    (QStringList {latitude, longitude, u"48"_s, u"18"_s, u"00"_s, u"N"_s, u"010"_s, u"07"_s,
                        u"40"_s, u"W"_s, u"IN48WH"_s}));
            }
        }
    }

    void convertsDegreesAndMinutes()
    {
        for (const char *locale : {"en_GB.UTF-8", "de_DE.UTF-8"}) {
            const test::NumericLocale numbers(locale);
            const Converter converter;
            converter.type(u"Text1"_s, u"48"_s);
            converter.type(u"Text2"_s, u"30"_s);
            converter.type(u"Text3"_s, u"00"_s);
            converter.choose(u"Combo1"_s, u"S"_s);
            converter.type(u"Text4"_s, u"11"_s);
            converter.type(u"Text5"_s, u"37"_s);
            converter.type(u"Text6"_s, u"50"_s);
            converter.choose(u"Combo2"_s, u"W"_s);
            converter.click(u"Command3"_s);
            QCOMPARE(converter.shown(),
                (QStringList {u"-48.5"_s, u"-11.625"_s, u"48"_s, u"30"_s, u"00"_s, u"S"_s, u"11"_s, u"37"_s,
                    u"50"_s, u"W"_s, u"IE41QM"_s}));
        }
    }

    void oneDigitAfterThePointIsTenthsOfAMinute()
    {
        const Converter converter;
        converter.type(u"Text1"_s, u"48"_s);
        converter.type(u"Text2"_s, u"07"_s);
        converter.type(u"Text3"_s, u"5"_s);
        converter.choose(u"Combo1"_s, u"N"_s);
        converter.type(u"Text4"_s, u"11"_s);
        converter.type(u"Text5"_s, u"37"_s);
        converter.type(u"Text6"_s, u"5"_s);
        converter.choose(u"Combo2"_s, u"E"_s);
        converter.click(u"Command3"_s);
        QCOMPARE(converter.problem(u"Text1"_s), QString());
        QCOMPARE(converter.shown(),
            (QStringList {u"48.125"_s, u"11.625"_s, u"48"_s, u"07"_s, u"50"_s, u"N"_s, u"11"_s, u"37"_s,
                u"50"_s, u"E"_s, u"JN58TD"_s}));
    }

    void decimalDegreesHoldWhatASingleHolds()
    {
        const Converter converter;
        converter.type(u"Text1"_s, u"51"_s);
        converter.type(u"Text2"_s, u"30"_s);
        converter.type(u"Text3"_s, u"25"_s);
        converter.choose(u"Combo1"_s, u"N"_s);
        converter.click(u"Command3"_s);
        QCOMPARE(converter.text(u"Text12"_s), u"51.5041656494141"_s);
    }

    void convertsALocator()
    {
        const Converter converter;
        converter.type(u"Text7"_s, u"jn58td"_s);
        QCOMPARE(converter.text(u"Text7"_s), u"JN58TD"_s);
        converter.click(u"Command2"_s);
        QCOMPARE(converter.shown(),
            (QStringList {u"48.1458320617676"_s, u"11.625"_s, u"48"_s, u"08"_s, u"75"_s, u"N"_s, u"011"_s,
                u"37"_s, u"50"_s, u"E"_s, u"JN58TD"_s}));
    }

    void theLocatorIsUpperCasedWhereTheCursorIs()
    {
        const Converter converter;
        converter.type(u"Text7"_s, u"JO50VA"_s);
        auto *field = converter.find<QLineEdit>(u"Text7"_s);
        field->setCursorPosition(1);
        QTest::keyClicks(field, u"nx"_s);
        QCOMPARE(field->text(), u"JNXO50VA"_s);
        QCOMPARE(field->cursorPosition(), 3);
    }

    void badInputSaysSoAndChangesNothingElse_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("problem");
        QTest::newRow("latitude") << u"Text12"_s << u"north"_s << u"Command1"_s << u"Text12"_s
                                  << u"“north” is not a number"_s;
        QTest::newRow("longitude") << u"Text9"_s << u"181"_s << u"Command1"_s << u"Text9"_s
                                   << u"A longitude goes from -180 to 180 degrees"_s;
        QTest::newRow("empty") << u"Text9"_s << u""_s << u"Command1"_s << u"Text9"_s
                               << u"Enter the longitude in decimal degrees"_s;
        QTest::newRow("latitude degrees") << u"Text1"_s << u"91"_s << u"Command3"_s << u"Text1"_s
                                          << u"A latitude goes from -90 to 90 degrees"_s;
        QTest::newRow("latitude minutes")
            << u"Text2"_s << u"5"_s << u"Command3"_s << u"Text1"_s << u"Minutes: two digits, 00 to 59"_s;
        QTest::newRow("latitude hundredths") << u"Text3"_s << u"x"_s << u"Command3"_s << u"Text1"_s
                                             << u"Hundredths of a minute: two digits, 00 to 99"_s;
        QTest::newRow("longitude degrees") << u"Text4"_s << u"1.5"_s << u"Command3"_s << u"Text4"_s
                                           << u"Degrees: “1.5” is not a whole number"_s;
        QTest::newRow("longitude minutes")
            << u"Text5"_s << u"60"_s << u"Command3"_s << u"Text4"_s << u"Minutes: two digits, 00 to 59"_s;
        QTest::newRow("longitude hundredths") << u"Text6"_s << u"123"_s << u"Command3"_s << u"Text4"_s
                                              << u"Hundredths of a minute: two digits, 00 to 99"_s;
        QTest::newRow("locator of four characters")
            << u"Text7"_s << u"JN58"_s << u"Command2"_s << u"Text7"_s
            << u"“JN58” is not two letters, two digits, two letters"_s;
    }

    void badInputSaysSoAndChangesNothingElse()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, button);
        QFETCH(QString, line);
        QFETCH(QString, problem);
        const Converter converter;
        auto *box = converter.find<QLineEdit>(field);
        const QString before = box->text();
        converter.type(field, typed);
        const QStringList shown = converter.shown();
        converter.click(button);
        QCOMPARE(converter.shown(), shown);
        QCOMPARE(converter.problem(line), problem);
        QCOMPARE(box->accessibleDescription(), problem);
        QVERIFY(box->hasFocus());

        // Typing clears the line, a right text converts.
        QTest::keyClick(box, Qt::Key_End);
        QTest::keyClicks(box, u"0"_s);
        QCOMPARE(converter.problem(line), QString());
        QCOMPARE(box->accessibleDescription(), QString());
        converter.type(field, before);
        converter.click(button);
        QCOMPARE(converter.problem(line), QString());
    }

    void bothCoordinatesAreJudged()
    {
        const Converter converter;
        converter.type(u"Text12"_s, u"a"_s);
        converter.type(u"Text9"_s, u"b"_s);
        converter.click(u"Command1"_s);
        QCOMPARE(converter.problem(u"Text12"_s), u"“a” is not a number"_s);
        QCOMPARE(converter.problem(u"Text9"_s), u"“b” is not a number"_s);
        QVERIFY(converter.find<QLineEdit>(u"Text12"_s)->hasFocus());
    }

    void veryLongTextsAreJudgedInOneLine()
    {
        const Converter converter;
        const int width = converter.find<QGroupBox>(u"decimalFrame"_s)->minimumSizeHint().width();
        for (const QString &name : {u"Text12"_s, u"Text9"_s, u"Text1"_s, u"Text4"_s, u"Text7"_s}) {
            converter.find<QLineEdit>(name)->setText(QString(10000, u'x'));
        }
        const auto judged = [&](const QString &button, const QString &line) {
            converter.click(button);
            const QString problem = converter.problem(line);
            return problem.contains(u"xxxxxxxxxxxxxxxx…”"_s, Qt::CaseInsensitive) && problem.size() < 80;
        };
        QVERIFY(judged(u"Command1"_s, u"Text12"_s));
        QVERIFY(judged(u"Command1"_s, u"Text9"_s));
        QVERIFY(judged(u"Command3"_s, u"Text1"_s));
        QVERIFY(judged(u"Command3"_s, u"Text4"_s));
        QVERIFY(judged(u"Command2"_s, u"Text7"_s));
        QVERIFY(converter.find<QGroupBox>(u"decimalFrame"_s)->minimumSizeHint().width() <= width);
    }

    void enterConvertsTheFrameItIsPressedIn()
    {
        const Converter converter;
        converter.type(u"Text7"_s, u"JJ00AA"_s);
        QTest::keyClick(converter.find<QLineEdit>(u"Text7"_s), Qt::Key_Return);
        QCOMPARE(converter.text(u"Text6"_s), u"50"_s);
        converter.type(u"Text12"_s, u"10"_s);
        QTest::keyClick(converter.find<QLineEdit>(u"Text12"_s), Qt::Key_Return);
        QCOMPARE(converter.text(u"Text1"_s), u"10"_s);
        converter.type(u"Text1"_s, u"20"_s);
        QTest::keyClick(converter.find<QLineEdit>(u"Text1"_s), Qt::Key_Return);
        QCOMPARE(converter.text(u"Text12"_s), u"20"_s);
    }

    void sendsTheTextsAsTheyStand()
    {
        Converter converter;
        QSignalSpy sent(&converter.dialog(), &Dialog::sendToLogBook);
        converter.type(u"Text12"_s, u"48,25"_s);
        converter.type(u"Text9"_s, u"-1.5"_s);
        converter.click(u"Command4"_s);
        QCOMPARE(sent.size(), 1);
        QCOMPARE(sent[0], (QVariantList {u"48,25"_s, u"-1.5"_s}));
    }

    void closeAndEscapeEndIt()
    {
        const QPointer<Dialog> closed = new Dialog(homeAt(u"0"_s, u"0"_s));
        closed->show();
        QTest::mouseClick(closed->findChild<QPushButton *>(u"CancelButton"_s), Qt::LeftButton);
        QTRY_VERIFY(closed.isNull());
        const QPointer<Dialog> escaped = new Dialog(homeAt(u"0"_s, u"0"_s));
        escaped->show();
        QTest::keyClick(escaped.data(), Qt::Key_Escape);
        QTRY_VERIFY(escaped.isNull());
    }

    void theMouseWheelChangesNoHemisphereThatHasNotTheFocus()
    {
        const Converter converter;
        converter.find<QLineEdit>(u"Text12"_s)->setFocus();
        const QStringList shown = converter.shown();
        for (const QString &name : {u"Combo1"_s, u"Combo2"_s}) {
            test::turnWheel(*converter.find<QComboBox>(name), 1);
            test::turnWheel(*converter.find<QComboBox>(name), -1);
            QCOMPARE(converter.shown(), shown);
        }
        QVERIFY(converter.find<QLineEdit>(u"Text12"_s)->hasFocus());
    }
};

QTEST_MAIN(TestDialog)
#include "tst_dialog.moc"
