#include "ui/scratchpad.h"

#include "core/config.h"
#include "support/dialogs.h"
#include "support/testfiles.h"

#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

class NoWriting : public FileCalls
{
public:
    bool refused = false;

    ssize_t write(int file, QByteArrayView bytes) override
    {
        if (!refused) {
            return FileCalls::write(file, bytes);
        }
        errno = ENOSPC;
        return -1;
    }
};

} // namespace

class TestScratchPad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void theControlsAreThere();
    void aNoteIsKeptOnOneLine();
    void aKeptNoteComesBackAsItWas();
    void anOpenNoteIsNotOverwritten();
    void anEmptyWindowIsFilledAgain();
    void blanksOfEveryKindAreKept_data();
    void blanksOfEveryKindAreKept();
    void anEmptyNoteIsKeptToo();
    void leavingKeepsTheOldNote_data();
    void leavingKeepsTheOldNote();
    void aFailingSaveKeepsTheWindow();

private:
    void open(const QByteArray &ini);
    void show();
    void write(const QString &text);
    void click(const QString &button);
    [[nodiscard]] QPlainTextEdit &note() { return *m_window->findChild<QPlainTextEdit *>(u"Text1"_s); }
    [[nodiscard]] QByteArray ini() const { return m_directory->read(u"LOGBOOK.INI"_s); }

    std::unique_ptr<TestDirectory> m_directory;
    std::unique_ptr<DialogAnswers> m_answers;
    std::unique_ptr<NoWriting> m_calls;
    std::unique_ptr<Config> m_config;
    QPointer<ScratchPad> m_window;
};

void TestScratchPad::cleanup()
{
    delete m_window.data();
    m_answers.reset();
}

void TestScratchPad::open(const QByteArray &ini)
{
    m_directory = std::make_unique<TestDirectory>();
    m_answers = std::make_unique<DialogAnswers>();
    m_calls = std::make_unique<NoWriting>();
    m_directory->write(u"LOGBOOK.INI"_s, ini);
    m_config = std::make_unique<Config>(m_directory->path(), CodePage(1252), *m_calls);
    m_config->readConfig();
    show();
}

void TestScratchPad::show()
{
    m_window = new ScratchPad(nullptr, *m_config);
    m_window->show();
    m_window->offerKeptNote();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void TestScratchPad::write(const QString &text)
{
    note().setFocus();
    note().selectAll();
    QTest::keyClick(&note(), Qt::Key_Delete);
    for (const QChar letter : text) {
        if (letter == u'\n') {
            QTest::keyClick(&note(), Qt::Key_Return);
        } else {
            QTest::sendKeyEvent(QTest::Click, &note(), Qt::Key_unknown, letter, Qt::NoModifier);
        }
    }
}

void TestScratchPad::click(const QString &button)
{
    QTest::mouseClick(m_window->findChild<QPushButton *>(button), Qt::LeftButton);
}

void TestScratchPad::theControlsAreThere()
{
    open("SCRATCH_PAD=one| twoCRLFthree\r\n");
    QCOMPARE(m_window->objectName(), u"ScratchPad"_s);
    QCOMPARE(m_window->windowTitle(), u"Quillon - Scratch Pad"_s);
    QVERIFY(!m_window->isModal());
    QCOMPARE(m_window->findChild<QPushButton *>(u"OKButton"_s)->text().remove(u'&'), u"Save"_s);
    QCOMPARE(m_window->findChild<QPushButton *>(u"CancelButton"_s)->text().remove(u'&'), u"Cancel"_s);
    QCOMPARE(note().toPlainText(), u"one, two\nthree"_s);
    QVERIFY(!note().accessibleName().isEmpty());
}

void TestScratchPad::aNoteIsKeptOnOneLine()
{
    open("OMID=1\r\nSCRATCH_PAD=old\r\nunknown\r\n");
    write(u"Bänd open, 12 July\n\nlook|up \"CRLF\""_s);
    click(u"OKButton"_s);
    QTRY_VERIFY(!m_window);
    QCOMPARE(ini(), "OMID=1\r\nSCRATCH_PAD=B\xE4nd open| 12 JulyCRLFCRLFlook|up \"CRLF\"\r\nunknown\r\n"_ba);
    QCOMPARE(m_config->settings().scratchPad, u"Bänd open, 12 July\r\n\r\nlook,up \"\r\n\""_s);
    QCOMPARE(m_answers->takeTexts(), QStringList());
}

void TestScratchPad::aKeptNoteComesBackAsItWas()
{
    open("OMID=1\r\n");
    write(u"one, two\n three\n"_s);
    click(u"OKButton"_s);
    QTRY_VERIFY(!m_window);
    QCOMPARE(ini(), "OMID=1\r\nSCRATCH_PAD=one| twoCRLF threeCRLF\r\n"_ba);
    show();
    QCOMPARE(note().toPlainText(), u"one, two\n three\n"_s);
    click(u"OKButton"_s);
    QCOMPARE(ini(), "OMID=1\r\nSCRATCH_PAD=one| twoCRLF threeCRLF\r\n"_ba);
}

void TestScratchPad::anOpenNoteIsNotOverwritten()
{
    open("SCRATCH_PAD=old\r\n");
    write(u"new"_s);
    m_window->offerKeptNote();
    QCOMPARE(note().toPlainText(), u"new"_s);
}

void TestScratchPad::anEmptyWindowIsFilledAgain()
{
    open("SCRATCH_PAD=old\r\n");
    write({});
    m_window->offerKeptNote();
    QCOMPARE(note().toPlainText(), u"old"_s);
}

void TestScratchPad::blanksOfEveryKindAreKept_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QByteArray>("kept");
    QTest::newRow("untouched") << QString()
                               << "SCRATCH_PAD=a\xA0"
                                  "bCRLF c\r\n"_ba;
    QTest::newRow("edited") << u"x"_s
                            << "SCRATCH_PAD=xa\xA0"
                               "bCRLF c\r\n"_ba;
}

void TestScratchPad::blanksOfEveryKindAreKept()
{
    QFETCH(QString, typed);
    QFETCH(QByteArray, kept);
    open("SCRATCH_PAD=a\xA0"
         "bCRLF c\r\n");
    note().moveCursor(QTextCursor::Start);
    QTest::keyClicks(&note(), typed);
    click(u"OKButton"_s);
    QCOMPARE(m_answers->takeTexts(), QStringList());
    QCOMPARE(ini(), kept);
}

void TestScratchPad::anEmptyNoteIsKeptToo()
{
    open("SCRATCH_PAD=old\r\n");
    write({});
    click(u"OKButton"_s);
    QCOMPARE(ini(), "SCRATCH_PAD=\r\n"_ba);
    QCOMPARE(m_config->settings().scratchPad, QString());
}

void TestScratchPad::leavingKeepsTheOldNote_data()
{
    QTest::addColumn<bool>("button");
    QTest::newRow("Cancel") << true;
    QTest::newRow("Esc") << false;
}

void TestScratchPad::leavingKeepsTheOldNote()
{
    QFETCH(bool, button);
    open("SCRATCH_PAD=old, one\n");
    write(u"new"_s);
    if (button) {
        click(u"CancelButton"_s);
    } else {
        QTest::keyClick(m_window, Qt::Key_Escape);
    }
    QTRY_VERIFY(!m_window);
    QCOMPARE(ini(), "SCRATCH_PAD=old, one\n"_ba);
    QCOMPARE(m_config->settings().scratchPad, u"old, one"_s);
}

void TestScratchPad::aFailingSaveKeepsTheWindow()
{
    open("SCRATCH_PAD=old\r\n");
    write(u"new"_s);
    m_calls->refused = true;
    click(u"OKButton"_s);
    const QStringList texts = m_answers->takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(u"Run-time error: Disk full\n"_s), qPrintable(texts.first()));
    QVERIFY(m_window->isVisible());
    QCOMPARE(note().toPlainText(), u"new"_s);
    QCOMPARE(ini(), "SCRATCH_PAD=old\r\n"_ba);
    m_calls->refused = false;
    click(u"OKButton"_s);
    QCOMPARE(ini(), "SCRATCH_PAD=new\r\n"_ba);
}

QTEST_MAIN(TestScratchPad)
#include "tst_scratchpad.moc"
