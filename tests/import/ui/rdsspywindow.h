#pragma once

#include "import/ui/importrdsspy.h"

#include "support/dialogs.h"
#include "support/testfiles.h"
#include "ui/resultlist.h"

#include <QDir>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <memory>
#include <vector>

namespace quillon::test {

/// The window with a configuration and a log folder of its own. What it adds is gathered in m_added.
class RdsSpyWindow
{
protected:
    void setUp()
    {
        m_directory = std::make_unique<TestDirectory>();
        m_answers = std::make_unique<DialogAnswers>();
        m_added.clear();
        m_atRow = {};
        m_failing = -1;
        m_refusing.clear();
        m_failingRest = false;
        m_savedRest = 0;
        m_directory->write(QStringLiteral("LOGBOOK.INI"),
            "TIME_OFFSET=-1\r\nRDSSPY_LOGS=" + QFile::encodeName(logs()) + "\r\nOMID=4711\r\n");
        QVERIFY(QDir().mkpath(logs()));
        m_config = std::make_unique<Config>(m_directory->path());
        m_config->readConfig();
    }

    void tearDown()
    {
        delete m_window.data();
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    [[nodiscard]] QString logs() const { return m_directory->file(QStringLiteral("logs")); }

    [[nodiscard]] static QStringList threeFiles()
    {
        return {QStringLiteral("2010-06-12 12-00-00 D3C3 R3.txt"),
            QStringLiteral("2010-06-12 10-00-00 D3C3 R1.txt"),
            QStringLiteral("2010-06-12 11-00-00 D3C3 R2.txt")};
    }

    void touch(const QStringList &names) const
    {
        for (const QString &name : names) {
            QFile file(QDir(logs()).filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void create()
    {
        delete m_window.data();
        m_window = new importRDSSpy(
            *m_config, m_regional,
            [this](const RdsSpyReception &reception) -> QString {
                if (m_atRow) {
                    m_atRow();
                }
                if (m_failing == static_cast<int>(m_added.size())) {
                    throw RuntimeError(ErrorName::DiskFull, QStringLiteral("Writing the log"));
                }
                if (m_refusing.contains(reception.rdsName)) {
                    return QStringLiteral("PI Code and RDS Name Empty");
                }
                m_added.push_back(reception);
                return {};
            },
            [this] {
                if (m_failingRest) {
                    throw RuntimeError(ErrorName::DiskFull, QStringLiteral("Writing the log"));
                }
                ++m_savedRest;
            });
    }

    // Opens the window and cancels its question.
    void open()
    {
        m_answers->cancel();
        create();
        m_window->start();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }

    void listedDay(const QStringList &names)
    {
        touch(names);
        m_answers->type(QStringLiteral("12/06/2010"));
        create();
        m_window->start();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        (void)m_answers->takeTexts();
    }

    void importAndAnswer()
    {
        m_answers->press(QMessageBox::Ok);
        click(QStringLiteral("Command3"));
    }

    [[nodiscard]] ResultList *list() const
    {
        return m_window->findChild<ResultList *>(QStringLiteral("List1"));
    }
    [[nodiscard]] QLineEdit *edit(const QString &name) const
    {
        return m_window->findChild<QLineEdit *>(name);
    }
    [[nodiscard]] QPushButton *button(const QString &name) const
    {
        return m_window->findChild<QPushButton *>(name);
    }
    [[nodiscard]] QString caption(const QString &name) const { return button(name)->text().remove(u'&'); }
    void click(const QString &name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    [[nodiscard]] QStringList lines() const
    {
        QStringList all;
        for (int i = 0; i < list()->count(); ++i) {
            all += list()->text(i);
        }
        return all;
    }

    std::unique_ptr<TestDirectory> m_directory;
    std::unique_ptr<DialogAnswers> m_answers;
    std::unique_ptr<Config> m_config;
    Regional m_regional {CodePage(), NumberFormat(), MonthNames::of(QLocale::c())};
    QPointer<importRDSSpy> m_window;
    std::vector<RdsSpyReception> m_added;
    std::function<void()> m_atRow; // called before a row is added
    int m_failing = -1; // so many rows are added, then one fails
    QStringList m_refusing; // the names that Add refuses
    bool m_failingRest = false; // what is not on the disk cannot be saved
    int m_savedRest = 0; // how often it was
};

} // namespace quillon::test
