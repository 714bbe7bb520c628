#include "core/config.h"
#include "support/dialogs.h"
#include "support/testfiles.h"
#include "ui/form2.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

/// The buttons of the setup that choose a directory.
class TestForm2Browse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aChosenDirectoryComesIntoItsField_data() { buttons(); }
    void aChosenDirectoryComesIntoItsField();
    void aDialogThatIsLeftChangesNothing_data() { buttons(); }
    void aDialogThatIsLeftChangesNothing();

private:
    static void buttons();
    [[nodiscard]] QString text(const QString &field) const
    {
        return m_window->findChild<QLineEdit *>(field)->text();
    }

    std::unique_ptr<TestDirectory> m_directory;
    std::unique_ptr<Config> m_config;
    std::unique_ptr<Form2> m_window;
    std::unique_ptr<DialogAnswers> m_answers;
};

void TestForm2Browse::buttons()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("other");
    QTest::newRow("RDSDX") << u"browseRdsdx"_s << u"rdsdir"_s << u"rdsspydir"_s;
    QTest::newRow("RDS Spy") << u"browseRdsSpy"_s << u"rdsspydir"_s << u"rdsdir"_s;
}

void TestForm2Browse::init()
{
    m_directory = std::make_unique<TestDirectory>();
    QVERIFY(QDir(m_directory->path()).mkpath(u"rdsdir/new"_s));
    QVERIFY(QDir(m_directory->path()).mkpath(u"rdsspydir/new"_s));
    m_directory->write(u"LOGBOOK.INI"_s,
        "RDSDX_LOG="_ba + m_directory->file(u"rdsdir"_s).toLocal8Bit()
            + "\r\nRDSSPY_LOGS=" + m_directory->file(u"rdsspydir"_s).toLocal8Bit() + "\r\n");
    m_config = std::make_unique<Config>(m_directory->path());
    m_config->readConfig();
    m_answers = std::make_unique<DialogAnswers>();
    m_window = std::make_unique<Form2>(nullptr, *m_config);
    m_window->setAttribute(Qt::WA_DeleteOnClose, false);
    m_window->show();
}

void TestForm2Browse::cleanup()
{
    m_window.reset();
    m_answers.reset();
}

void TestForm2Browse::aChosenDirectoryComesIntoItsField()
{
    QFETCH(QString, button);
    QFETCH(QString, field);
    QFETCH(QString, other);
    const QString before = text(field);
    const QString otherBefore = text(other);
    QString startedIn;
    m_answers->doing([&](QWidget *box) {
        auto *dialog = qobject_cast<QFileDialog *>(box);
        QVERIFY(dialog);
        QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
        startedIn = dialog->directory().path();
        dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(before + u"/new"_s);
        QTest::keyClick(dialog->findChild<QLineEdit *>(u"fileNameEdit"_s), Qt::Key_Return);
    });
    QTest::mouseClick(m_window->findChild<QPushButton *>(button), Qt::LeftButton);
    QCOMPARE(startedIn, before);
    QCOMPARE(text(field), QString(before + u"/new"_s));
    QCOMPARE(text(other), otherBefore);
}

void TestForm2Browse::aDialogThatIsLeftChangesNothing()
{
    QFETCH(QString, button);
    QFETCH(QString, field);
    const QString before = text(field);
    m_answers->cancel();
    QTest::mouseClick(m_window->findChild<QPushButton *>(button), Qt::LeftButton);
    QCOMPARE(m_answers->seen().size(), 1);
    QCOMPARE(text(field), before);
}

QTEST_MAIN(TestForm2Browse)
#include "tst_form2_browse.moc"
