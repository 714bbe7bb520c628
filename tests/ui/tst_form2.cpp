#include "ui/form2.h"

#include "core/config.h"
#include "support/dialogs.h"
#include "support/testfiles.h"

#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QByteArray settings = "LOG_BOOK_CALLSIGN=Jos\xE9| DX\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\n"
                            "LOGBOOK_FILENAME=2010.log\r\nOMID=77\r\nEMAIL=me@example.org\r\n"
                            "RDSDX_LOG=/dx\r\nRDSSPY_LOGS=/spy\r\nAS_MILES=FALSE\r\n"_ba;

// Renaming works so many times and fails from then on.
class FailingRename : public FileCalls
{
public:
    int left = 1000;

    int rename(const QByteArray &from, const QByteArray &to) override
    {
        if (left-- > 0) {
            return FileCalls::rename(from, to);
        }
        errno = ENOSPC;
        return -1;
    }
};

} // namespace

class TestForm2 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        delete m_window.data();
        m_answers.reset();
    }

    void theControlsAreThere()
    {
        open(settings);
        QCOMPARE(m_window->objectName(), u"Form2"_s);
        QCOMPARE(m_window->windowTitle(), u"Setup"_s);
        QVERIFY(!m_window->isModal());
        QStringList frames;
        for (const QGroupBox *frame : m_window->findChildren<QGroupBox *>()) {
            frames += frame->title();
        }
        QCOMPARE(frames,
            (QStringList {u"General"_s, u"Home Location"_s, u"Distance"_s, u"FMList"_s, u"Directories"_s}));
        const QStringList labelled {u"Text1"_s, u"Full Name or Callsign"_s, u"Text2"_s, u"LogBook FileName"_s,
            u"latitude"_s, u"Decimal Latitude"_s, u"longitude"_s, u"Decimal Longitude"_s, u"omid"_s,
            u"OMID"_s, u"email"_s, u"Your E-Mail address"_s, u"rdsdir"_s, u"RDSDX"_s, u"rdsspydir"_s,
            u"RDS Spy"_s};
        for (qsizetype i = 0; i < labelled.size(); i += 2) {
            QString caption;
            for (const QLabel *label : m_window->findChildren<QLabel *>()) {
                if (label->buddy() == &field(labelled.at(i))) {
                    caption = label->text().remove(u'&');
                }
            }
            QCOMPARE(caption, labelled.at(i + 1));
            QVERIFY(!field(labelled.at(i)).accessibleName().isEmpty());
        }
        QCOMPARE(m_window->findChild<QRadioButton *>(u"Option1"_s)->text().remove(u'&'), u"Kilometres"_s);
        QCOMPARE(m_window->findChild<QRadioButton *>(u"Option2"_s)->text().remove(u'&'), u"Miles"_s);
        QCOMPARE(m_window->findChild<QPushButton *>(u"Command1"_s)->text().remove(u'&'), u"Save"_s);
        QCOMPARE(m_window->findChild<QPushButton *>(u"Command2"_s)->text().remove(u'&'), u"Close"_s);
        bool hinted = false;
        for (const QLabel *label : m_window->findChildren<QLabel *>()) {
            hinted = hinted
                || label->text()
                    == u"OMID can be found in brackets next to your listening location settings in FMList"_s;
        }
        QVERIFY(hinted);
    }

    void theFieldsShowTheSettings()
    {
        open(settings);
        QCOMPARE(field(u"Text1"_s).text(), u"José, DX"_s);
        QCOMPARE(field(u"Text2"_s).text(), u"2010.log"_s);
        QCOMPARE(field(u"latitude"_s).text(), u"51.5"_s);
        QCOMPARE(field(u"longitude"_s).text(), u"-0.1"_s);
        QCOMPARE(field(u"omid"_s).text(), u"77"_s);
        QCOMPARE(field(u"email"_s).text(), u"me@example.org"_s);
        QCOMPARE(field(u"rdsdir"_s).text(), u"/dx"_s);
        QCOMPARE(field(u"rdsspydir"_s).text(), u"/spy"_s);
    }

    void theUnitIsMilesForTrueAlone_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("miles");
        QTest::newRow("nothing set") << ""_ba << true;
        QTest::newRow("TRUE") << "AS_MILES=TRUE\r\n"_ba << true;
        QTest::newRow("FALSE") << "AS_MILES=FALSE\r\n"_ba << false;
        QTest::newRow("true") << "AS_MILES=true\r\n"_ba << false;
        QTest::newRow("empty") << "AS_MILES=\r\n"_ba << false;
    }

    void theUnitIsMilesForTrueAlone()
    {
        QFETCH(QByteArray, line);
        QFETCH(bool, miles);
        open(line);
        QCOMPARE(m_window->findChild<QRadioButton *>(u"Option2"_s)->isChecked(), miles);
        QCOMPARE(m_window->findChild<QRadioButton *>(u"Option1"_s)->isChecked(), !miles);
    }

    void savingWritesTheKeysInOrder()
    {
        open(""_ba);
        type(u"Text1"_s, u"Ann, Bob"_s);
        type(u"latitude"_s, u"51,5"_s);
        type(u"longitude"_s, u"-0.1"_s);
        type(u"Text2"_s, u"log.txt"_s);
        type(u"omid"_s, u"12"_s);
        type(u"email"_s, u"a@b.c"_s);
        type(u"rdsdir"_s, u"C:\\dx"_s);
        type(u"rdsspydir"_s, u"C:\\spy\\"_s);
        m_window->findChild<QRadioButton *>(u"Option1"_s)->click();
        click(u"Command1"_s);
        QCOMPARE(ini(),
            "LOG_BOOK_CALLSIGN=Ann| "
            "Bob\r\nHOME_DEC_LAT=51|5\r\nHOME_DEC_LON=-0.1\r\nLOGBOOK_FILENAME=log.txt\r\n"
            "OMID=12\r\nEMAIL=a@b.c\r\nRDSDX_LOG=C:\\dx\r\nRDSSPY_LOGS=C:\\spy\\\r\nAS_MILES=FALSE\r\n"_ba);
        QCOMPARE(m_config->settings().callsign, u"Ann, Bob"_s);
        QCOMPARE(m_config->settings().homeLatitude, u"51,5"_s);
        QVERIFY(!m_config->settings().inMiles());
        QCOMPARE(m_directory->names(), QStringList {u"LOGBOOK.INI"_s});
    }

    void savingKeepsTheOtherLines()
    {
        open("unknown\r\nOMID=1\r\nSCRATCH_PAD=a| bCRLFc\r\nTIME_OFFSET=-1\r\nFMLIST_URL=http://127.0.0.1\r\n"
             "OMID=2\r\n"_ba);
        type(u"omid"_s, u"3"_s);
        m_window->findChild<QRadioButton *>(u"Option2"_s)->click();
        click(u"Command1"_s);
        QCOMPARE(ini(),
            "unknown\r\nOMID=3\r\nSCRATCH_PAD=a| bCRLFc\r\nTIME_OFFSET=-1\r\nFMLIST_URL=http://127.0.0.1\r\n"
            "OMID=3\r\nLOG_BOOK_CALLSIGN=NOCALL\r\nHOME_DEC_LAT=0\r\nHOME_DEC_LON=0\r\n"
            "LOGBOOK_FILENAME=RDSLog.log\r\nEMAIL=\r\nRDSDX_LOG=C:\\RDSDX\\Loggings\r\n"
            "RDSSPY_LOGS=C:\\RDSSpy\r\nAS_MILES=TRUE\r\n"_ba);
    }

    void savingTellsAndCloses()
    {
        open(settings);
        QSignalSpy saved(m_window, &Form2::saved);
        type(u"Text1"_s, u"DL1ABC"_s);
        QTest::keyClick(&field(u"Text1"_s), Qt::Key_Return);
        QCOMPARE(saved.count(), 1);
        QVERIFY(!m_window || !m_window->isVisible());
        QTRY_VERIFY(!m_window);
        QCOMPARE(m_config->settings().callsign, u"DL1ABC"_s);
    }

    void aFileNameWithAPathIsRefused_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"C:log.txt", "sub\\log.txt", "C:\\log.txt", "sub/log.txt", "/log.txt", ":",
                 "\\", "/", "../log.txt", "log.txt:"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }

    void aFileNameWithAPathIsRefused()
    {
        QFETCH(QString, name);
        open(settings);
        QSignalSpy saved(m_window, &Form2::saved);
        type(u"Text1"_s, u"other"_s);
        type(u"Text2"_s, name);
        click(u"Command1"_s);
        QCOMPARE(m_answers->seen().size(), 1);
        QCOMPARE(m_answers->seen().first().title, u"Quillon"_s);
        QCOMPARE(m_answers->takeTexts(), QStringList {u"Only FileName no Path "_s + name});
        QVERIFY(m_window->isVisible());
        QCOMPARE(field(u"Text1"_s).text(), u"other"_s);
        QCOMPARE(field(u"Text2"_s).text(), name);
        QCOMPARE(ini(), settings);
        QCOMPARE(saved.count(), 0);
    }

    void whatIsTypedIsSavedAsItStands()
    {
        open(settings);
        type(u"Text1"_s, {});
        type(u"Text2"_s, {});
        type(u"latitude"_s, u"north"_s);
        type(u"longitude"_s, u" 7 "_s);
        click(u"Command1"_s);
        QCOMPARE(m_answers->takeTexts(), QStringList());
        QCOMPARE(ini(),
            "LOG_BOOK_CALLSIGN=\r\nHOME_DEC_LAT=north\r\nHOME_DEC_LON= 7 \r\nLOGBOOK_FILENAME=\r\nOMID=77\r\n"
            "EMAIL=me@example.org\r\nRDSDX_LOG=/dx\r\nRDSSPY_LOGS=/spy\r\nAS_MILES=FALSE\r\n"_ba);
    }

    void closingLeavesTheFileUntouched_data()
    {
        QTest::addColumn<bool>("button");
        QTest::newRow("Close") << true;
        QTest::newRow("Esc") << false;
    }

    void closingLeavesTheFileUntouched()
    {
        QFETCH(bool, button);
        // Quotes and commas would not survive a rewriting.
        const QByteArray bytes = settings + "\"quoted\", item\n";
        open(bytes);
        QSignalSpy saved(m_window, &Form2::saved);
        type(u"Text1"_s, u"other"_s);
        type(u"rdsdir"_s, u"C:\\x\\"_s);
        if (button) {
            click(u"Command2"_s);
        } else {
            QTest::keyClick(m_window, Qt::Key_Escape);
        }
        QCOMPARE(saved.count(), 0);
        QTRY_VERIFY(!m_window);
        QCOMPARE(ini(), bytes);
        QCOMPARE(m_config->settings().callsign, u"José, DX"_s);
        QCOMPARE(m_answers->takeTexts(), QStringList());
    }

    void oneBackslashAtTheEndIsDropped_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("one") << u"C:\\RDSDX\\"_s << u"C:\\RDSDX"_s;
        QTest::newRow("two") << u"C:\\RDSDX\\\\"_s << u"C:\\RDSDX\\"_s;
        QTest::newRow("none") << u"C:\\RDSDX"_s << u"C:\\RDSDX"_s;
        QTest::newRow("nothing else") << u"\\"_s << u""_s;
        QTest::newRow("a slash") << u"/dx/"_s << u"/dx/"_s;
        QTest::newRow("empty") << u""_s << u""_s;
    }

    void oneBackslashAtTheEndIsDropped()
    {
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        open(settings);
        type(u"rdsdir"_s, typed);
        QCOMPARE(field(u"rdsdir"_s).text(), typed);
        QTest::keyClick(&field(u"rdsdir"_s), Qt::Key_Tab);
        QCOMPARE(field(u"rdsdir"_s).text(), kept);
        click(u"Command1"_s);
        QCOMPARE(m_config->settings().rdsdxDirectory, kept);
    }

    void aMenuLeavesTheBackslash_data()
    {
        QTest::addColumn<int>("reason");
        QTest::newRow("a context menu") << int(Qt::PopupFocusReason);
        QTest::newRow("a menu bar") << int(Qt::MenuBarFocusReason);
        QTest::newRow("another window") << int(Qt::ActiveWindowFocusReason);
    }

    void aMenuLeavesTheBackslash()
    {
        QFETCH(int, reason);
        open("");
        type(u"rdsdir"_s, u"C:\\dx\\"_s);
        QFocusEvent left(QEvent::FocusOut, static_cast<Qt::FocusReason>(reason));
        QCoreApplication::sendEvent(&field(u"rdsdir"_s), &left);
        QCOMPARE(field(u"rdsdir"_s).text(), u"C:\\dx\\"_s);
    }

    void enterInTheDirectoryDropsTheBackslashToo()
    {
        open(settings);
        type(u"rdsdir"_s, u"C:\\dx\\"_s);
        QTest::keyClick(&field(u"rdsdir"_s), Qt::Key_Return);
        QCOMPARE(m_config->settings().rdsdxDirectory, u"C:\\dx"_s);
    }

    void whatIsOddIsTold_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("problem");
        for (const QString &name : {u"latitude"_s, u"longitude"_s}) {
            const QString what = name == u"latitude"_s ? u"Latitude"_s : u"Longitude"_s;
            for (const QString &text : {u"51.5"_s, u"51,5"_s, u"-0.1"_s, u""_s}) {
                QTest::addRow("%s %s", qPrintable(name), qPrintable(text)) << name << text << QString();
            }
            for (const QString &text : {u"north"_s, u"51 30 N"_s}) {
                QTest::addRow("%s %s", qPrintable(name), qPrintable(text))
                    << name << text << what + u" is not a number: 51.34 is one"_s;
            }
        }
        QTest::newRow("beyond the pole") << u"latitude"_s << u"91"_s << u"Latitude is outside -90 to 90"_s;
        QTest::newRow("around the world")
            << u"longitude"_s << u"-181"_s << u"Longitude is outside -180 to 180"_s;
        for (const QString &name : {u"Text1"_s, u"Text2"_s, u"latitude"_s, u"longitude"_s, u"omid"_s,
                 u"email"_s, u"rdsdir"_s, u"rdsspydir"_s}) {
            QTest::addRow("a bar in %s", qPrintable(name))
                << name << u"1|2"_s << u"\"|\" stands for a comma in the settings and comes back as \",\""_s;
        }
        QTest::newRow("a comma") << u"Text1"_s << u"Ann, Bob"_s << QString();
        QTest::newRow("a letter") << u"Text1"_s << u"Łukasz"_s << u"Ł is stored as L"_s;
    }

    void whatIsOddIsTold()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        QFETCH(QString, problem);
        open(settings);
        const auto *label = m_window->findChild<QLabel *>(u"problem"_s);
        QCOMPARE(label->text(), QString());
        const QSize size = m_window->size();
        field(name).selectAll();
        field(name).insert(text);
        QCOMPARE(label->text(), problem);
        QCOMPARE(field(name).findChild<QWidget *>(u"problemFrame"_s)->isVisible(), !problem.isEmpty());
        if (name != u"rdsdir"_s && name != u"rdsspydir"_s) {
            QCOMPARE(m_window->size(), size);
        }
        click(u"Command1"_s);
        QCOMPARE(m_answers->takeTexts(), QStringList());
        QVERIFY(!m_window || !m_window->isVisible());
    }

    void whatIsOddInTheFileIsTold()
    {
        open("HOME_DEC_LAT=north\r\n");
        QCOMPARE(
            m_window->findChild<QLabel *>(u"problem"_s)->text(), u"Latitude is not a number: 51.34 is one"_s);
    }

    void hintsTellWhereADirectoryIs()
    {
        TestDirectory prefix;
        prefix.write(u"dosdevices/c:/RDSDX/Loggings/x.txt"_s, {});
        qputenv("WINEPREFIX", prefix.path().toLocal8Bit());
        open(settings);
        QCOMPARE(hint(u"rdsdirHint"_s), QString());
        QCOMPARE(hint(u"rdsspydirHint"_s), QString());
        type(u"rdsdir"_s, u"C:\\rdsdx\\LOGGINGS"_s);
        QCOMPARE(hint(u"rdsdirHint"_s), u"Looked for as "_s + prefix.file(u"dosdevices/c:/RDSDX/Loggings"_s));
        type(u"rdsspydir"_s, u"~/spy"_s);
        QCOMPARE(hint(u"rdsspydirHint"_s), u"Looked for as "_s + QDir::homePath() + u"/spy"_s);
        qunsetenv("WINEPREFIX");
    }

    void theWindowGrowsWithAHint()
    {
        open(settings);
        const auto *page = m_window->findChild<QScrollArea *>(u"page"_s);
        QCOMPARE(page->verticalScrollBar()->maximum(), 0);
        const int before = m_window->height();
        field(u"rdsspydir"_s).setText(u"~/spy"_s);
        QTRY_VERIFY(m_window->height() > before);
        QTRY_COMPARE(page->verticalScrollBar()->maximum(), 0);
        // A longer one takes several lines.
        const int ofOneLine = m_window->height();
        field(u"rdsspydir"_s).setText(u"~/"_s + u"spy and more "_s.repeated(20));
        QTRY_VERIFY(m_window->height() > ofOneLine);
        QTRY_COMPARE(page->verticalScrollBar()->maximum(), 0);
    }

    void aFailingSaveKeepsTheWindow()
    {
        open(settings);
        QSignalSpy saved(m_window, &Form2::saved);
        type(u"Text1"_s, u"DL1ABC"_s);
        type(u"email"_s, u"new@example.org"_s);
        m_calls->left = 1;
        click(u"Command1"_s);
        const QStringList texts = m_answers->takeTexts();
        QCOMPARE(texts.size(), 1);
        QVERIFY2(texts.first().startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts.first()));
        QVERIFY2(texts.first().contains(m_directory->file(u"LOGBOOK.INI"_s)), qPrintable(texts.first()));
        QVERIFY(m_window->isVisible());
        QCOMPARE(field(u"email"_s).text(), u"new@example.org"_s);
        QCOMPARE(ini(), QByteArray(settings).replace("Jos\xE9| DX", "DL1ABC"));
        QCOMPARE(saved.count(), 0);
        m_calls->left = 1000;
        click(u"Command1"_s);
        QCOMPARE(m_config->settings().email, u"new@example.org"_s);
        QCOMPARE(saved.count(), 1);
    }

private:
    void open(const QByteArray &ini)
    {
        m_directory = std::make_unique<TestDirectory>();
        m_answers = std::make_unique<DialogAnswers>();
        m_calls = std::make_unique<FailingRename>();
        m_directory->write(u"LOGBOOK.INI"_s, ini);
        m_config = std::make_unique<Config>(m_directory->path(), CodePage(1252), *m_calls);
        m_config->readConfig();
        m_window = new Form2(nullptr, *m_config);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }
    [[nodiscard]] QLineEdit &field(const QString &name) { return *m_window->findChild<QLineEdit *>(name); }
    void type(const QString &name, const QString &text)
    {
        QLineEdit &edit = field(name);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, text);
    }
    void click(const QString &button)
    {
        QTest::mouseClick(m_window->findChild<QPushButton *>(button), Qt::LeftButton);
    }
    [[nodiscard]] QString hint(const QString &name)
    {
        const auto *label = m_window->findChild<QLabel *>(name);
        return label->isVisible() ? label->text() : QString();
    }
    [[nodiscard]] QByteArray ini() const { return m_directory->read(u"LOGBOOK.INI"_s); }

    std::unique_ptr<TestDirectory> m_directory;
    std::unique_ptr<DialogAnswers> m_answers;
    std::unique_ptr<FailingRename> m_calls;
    std::unique_ptr<Config> m_config;
    QPointer<Form2> m_window;
};

QTEST_MAIN(TestForm2)
#include "tst_form2.moc"
