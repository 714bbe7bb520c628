#include "app/otherprogram.h"
#include "support/dialogs.h"
#include "support/strangers.h"
#include "support/testfiles.h"

#include <QDir>
#include <QLocalSocket>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

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

    // Even before the box has been given the focus.
    void enterIsForShowingTheOther()
    {
        DialogAnswers answers;
        QString entered;
        answers.doing([&](QWidget *box) {
            const auto *button = qobject_cast<QPushButton *>(box->focusWidget());
            entered = button && button->isDefault() ? button->text() : QString();
            box->close();
        });
        tellFolderInUse(m_home->path());
        QCOMPARE(entered, u"&Show the Other"_s);
    }

private:
    std::unique_ptr<TestDirectory> m_home;
};

QTEST_MAIN(TestOtherProgram)
#include "tst_otherprogram.moc"
