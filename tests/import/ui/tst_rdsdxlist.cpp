#include "import/ui/rdsdxlist.h"

#include "platform/runtimeerror.h"
#include "support/dialogs.h"
#include "support/testfiles.h"
#include "ui/resultlist.h"

#include <QDir>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <memory>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

class TestRdsdxList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<TestDirectory>();
        m_answers = std::make_unique<DialogAnswers>();
        m_imported.clear();
        m_fail = false;
        m_hiddenWhileImporting = false;
    }

    void cleanup() { delete m_window.data(); }

    void theControlsAreThere()
    {
        open({u"20100612.txt"_s});
        QCOMPARE(m_window->objectName(), u"rdsdxlist"_s);
        QCOMPARE(m_window->windowTitle(), u"RDSDX Loggings"_s);
        QVERIFY(!m_window->isModal());
        QCOMPARE(button(u"OKButton"_s)->text().remove(u'&'), u"OK"_s);
        QCOMPARE(button(u"CancelButton"_s)->text().remove(u'&'), u"Cancel"_s);
    }

    void filesAreListedByNameWithTheLastHighlighted()
    {
        QVERIFY(QDir(m_directory->path()).mkdir(u"20100701.txt"_s));
        open({u"20110101.txt"_s, u"20100612.TXT"_s, u"20091231.txt"_s, u"20100613.log"_s, u"notes.txt"_s});
        QCOMPARE(
            names(), QStringList({u"20091231.txt"_s, u"20100612.TXT"_s, u"20110101.txt"_s, u"notes.txt"_s}));
        QCOMPARE(list()->listIndex(), 3);
        QVERIFY(button(u"OKButton"_s)->isEnabled());
        QCOMPARE(
            m_window->findChild<QLabel *>(u"folder"_s)->text(), QString(u"Folder: "_s + m_directory->path()));
    }

    void anEmptyFolderLeavesNothingToImport()
    {
        open({});
        QCOMPARE(list()->count(), 0);
        QCOMPARE(list()->emptyText(),
            u"No .txt files in %1. Another folder is set in the menu Setup, under Directories."_s.arg(
                m_directory->path()));
        QVERIFY(!button(u"OKButton"_s)->isEnabled());
        QTest::keyClick(list(), Qt::Key_Return);
        QCOMPARE(m_imported, QStringList());
        QVERIFY(m_window->isVisible());
    }

    void aMissingFolderSaysWhere_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("text");
        QTest::newRow("missing") << u"/nonexistent/RDSDX"_s
                                 << u"There is no folder /nonexistent/RDSDX. Set the RDSDX directory in the "
                                    "menu Setup, under Directories."_s;
        QTest::newRow("not set")
            << u""_s << u"No RDSDX directory is set. Set it in the menu Setup, under Directories."_s;
    }

    void aMissingFolderSaysWhere()
    {
        QFETCH(QString, folder);
        QFETCH(QString, text);
        open({});
        m_window->start(folder);
        QCOMPARE(list()->count(), 0);
        QCOMPARE(m_window->findChild<QLabel *>(u"folder"_s)->text(), text);
        QCOMPARE(list()->emptyText(), text);
        QCOMPARE(m_answers->takeTexts(), QStringList());
    }

    void okImportsTheHighlightedFileAndUnloads()
    {
        open({u"20100612.txt"_s, u"20100613.txt"_s});
        QTest::keyClick(list(), Qt::Key_Up);
        QTest::mouseClick(button(u"OKButton"_s), Qt::LeftButton);
        QCOMPARE(m_imported, QStringList({u"20100612.txt"_s}));
        QVERIFY(m_hiddenWhileImporting);
        QTRY_VERIFY(m_window.isNull());
    }

    void enterImports()
    {
        open({u"20100612.txt"_s});
        QTest::keyClick(list(), Qt::Key_Return);
        QCOMPARE(m_imported, QStringList({u"20100612.txt"_s}));
        QTRY_VERIFY(m_window.isNull());
    }

    void aDoubleClickImports()
    {
        open({u"20100612.txt"_s, u"20100613.txt"_s});
        const QPoint first = list()->visualRect(list()->model()->index(0, 0)).center();
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, first);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, first);
        QCOMPARE(m_imported, QStringList({u"20100612.txt"_s}));
    }

    void anImportThatFailsBringsTheWindowBack()
    {
        open({u"20100612.txt"_s});
        m_fail = true;
        m_answers->press(QMessageBox::Ok);
        QTest::mouseClick(button(u"OKButton"_s), Qt::LeftButton);
        QCOMPARE(m_answers->takeTexts(), QStringList({u"Run-time error: Type mismatch\nline 2"_s}));
        QVERIFY(m_window->isVisible());
        QVERIFY(button(u"OKButton"_s)->isEnabled());
    }

    void cancelAndEscapeImportNothing_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("Cancel") << false;
        QTest::newRow("Esc") << true;
    }

    void cancelAndEscapeImportNothing()
    {
        QFETCH(bool, escape);
        open({u"20100612.txt"_s});
        if (escape) {
            QTest::keyClick(list(), Qt::Key_Escape);
        } else {
            QTest::mouseClick(button(u"CancelButton"_s), Qt::LeftButton);
        }
        QTRY_VERIFY(m_window.isNull());
        QCOMPARE(m_imported, QStringList());
    }

private:
    void open(const QStringList &files)
    {
        for (const QString &name : files) {
            m_directory->write(name, "");
        }
        m_window = new rdsdxlist(CodePage(), [this](const QString &file) {
            m_hiddenWhileImporting = !m_window->isVisible();
            if (m_fail) {
                throw RuntimeError(ErrorName::TypeMismatch, u"line 2"_s);
            }
            m_imported += file;
        });
        m_window->start(m_directory->path());
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }

    [[nodiscard]] ResultList *list() const { return m_window->findChild<ResultList *>(u"List1"_s); }
    [[nodiscard]] QPushButton *button(const QString &name) const
    {
        return m_window->findChild<QPushButton *>(name);
    }
    [[nodiscard]] QStringList names() const
    {
        QStringList all;
        for (int i = 0; i < list()->count(); ++i) {
            all += list()->text(i);
        }
        return all;
    }

    std::unique_ptr<TestDirectory> m_directory;
    std::unique_ptr<DialogAnswers> m_answers;
    QPointer<rdsdxlist> m_window;
    QStringList m_imported;
    bool m_fail = false;
    bool m_hiddenWhileImporting = false;
};

QTEST_MAIN(TestRdsdxList)
#include "tst_rdsdxlist.moc"
