#include "app/otherprogram.h"
#include "support/dialogs.h"
#include "support/strangers.h"
#include "support/testfiles.h"

#include <QApplication>
#include <QDir>
#include <QLocalSocket>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

/// Looks, as long as it lives, which button of a box Enter presses when it comes.
class EnterAtFirst : public QObject
{
public:
    EnterAtFirst() { qApp->installEventFilter(this); }
    [[nodiscard]] const QString &button() const { return m_button; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *box = qobject_cast<QMessageBox *>(watched);
        if (box && event->type() == QEvent::Show) {
            const auto *button = qobject_cast<QPushButton *>(box->focusWidget());
            m_button = button && button->isDefault() ? button->text() : QString();
        }
        return false;
    }

private:
    QString m_button;
};

} // namespace

/// The door of a program, and what is said to one that finds its folder in use.
class TestOtherProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<TestDirectory>();
        QDir().mkpath(m_home->file(u"run"_s));
        QFile::setPermissions(m_home->file(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_home->file(u"run"_s)));
    }

    void whoeverIsAtTheDoorIsAnsweredAndLetGo()
    {
        FrontDoor door(m_home->path());
        const QSignalSpy wanted(&door, &FrontDoor::wanted);
        const QStringList doors = QDir(m_home->file(u"run"_s)).entryList(QDir::System);
        QCOMPARE(doors.size(), 1);
        QLocalSocket guest;
        guest.connectToServer(m_home->file(u"run/"_s + doors.first()));
        QTRY_COMPARE(guest.bytesAvailable(), 4);
        QCOMPARE(guest.readAll(), "here"_ba);
        QTRY_COMPARE(guest.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(wanted.size(), 1);
    }

    void nobodyAnswersWhereNoProgramIs() { QVERIFY(!bringToFront(m_home->path())); }

    void theFolderIsShownAsItIsWritten()
    {
        for (const QString &text : strangeTexts()) {
            const StrangersWatch watch;
            DialogAnswers answers;
            answers.cancel();
            tellFolderInUse(u"/home/"_s + text);
            QCOMPARE(answers.seen().size(), 1);
            QVERIFY(answers.seen().first().text.contains(u"/home/"_s + text));
            QVERIFY(!watch.seen().isEmpty());
            QCOMPARE(watch.taken().join(u'\n'), QString());
        }
    }

    void enterIsForShowingTheOtherFromTheBeginning()
    {
        DialogAnswers answers;
        const EnterAtFirst enter;
        answers.cancel();
        tellFolderInUse(m_home->path());
        QCOMPARE(enter.button(), u"&Show the Other"_s);
    }

private:
    std::unique_ptr<TestDirectory> m_home;
};

QTEST_MAIN(TestOtherProgram)
#include "tst_otherprogram.moc"
