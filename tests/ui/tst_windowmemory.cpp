#include "support/testfiles.h"
#include "ui/onscreen.h"
#include "ui/windowmemory.h"

#include <QDialog>
#include <QFile>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

// A window with a splitter and a table of three columns.
struct Window : QWidget
{
    QSplitter *splitter = new QSplitter(this);
    QTableView *table = new QTableView;
    QStandardItemModel model {0, 3};

    explicit Window(QWidget *parent = nullptr)
        : QWidget(parent, Qt::Window)
    {
        setObjectName(u"Some"_s);
        splitter->setObjectName(u"between"_s);
        splitter->addWidget(table);
        splitter->addWidget(new QWidget);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(splitter);
        table->setModel(&model);
        header().setSectionsMovable(true);
        resize(400, 300);
    }
    [[nodiscard]] QHeaderView &header() const { return *table->horizontalHeader(); }
};

const QSize firstSize(400, 300);

// Opens the window, does this with it, and closes it.
template<typename Work>
void visit(WindowMemory &memory, Window &window, const Work &work)
{
    memory.keep(window);
    memory.keep(window.header(), u"table"_s);
    window.show();
    work(window);
    window.close();
}

template<typename Work>
void visit(const QString &file, const Work &work)
{
    Window window;
    WindowMemory memory(file);
    visit(memory, window, work);
}

void arrange(Window &window)
{
    window.setGeometry(60, 50, 500, 350);
    window.splitter->setSizes({100, 300});
    window.header().moveSection(2, 0);
    window.header().resizeSection(0, 77);
    window.header().hideSection(0);
}

bool isOnScreen(const QWidget &window)
{
    return window.screen()->availableGeometry().contains(window.frameGeometry());
}

} // namespace

/// What is kept of the windows from run to run.
class TestWindowMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<TestDirectory>();
        m_file = m_home->file(u"quillon/windows.ini"_s);
    }

    void theFileIsAmongTheSettingsOfTheUser()
    {
        const QByteArray before = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", m_home->path().toUtf8());
        QCOMPARE(WindowMemory::standardFile(), m_file);
        qputenv("XDG_CONFIG_HOME", before);
    }

    void aWindowOpensAsItWas()
    {
        QRect left;
        QList<int> sizes;
        visit(m_file, [&](Window &window) {
            QCOMPARE(window.size(), firstSize);
            arrange(window);
            left = window.geometry();
            sizes = window.splitter->sizes();
        });
        QCOMPARE(left.size(), QSize(500, 350));
        visit(m_file, [&](Window &window) {
            QCOMPARE(window.geometry(), left);
            QCOMPARE(window.splitter->sizes(), sizes);
            QCOMPARE(lookOf(window.header()).order, QList({2, 0, 1}));
            QVERIFY(window.header().isSectionHidden(0));
            window.header().showSection(0);
            QCOMPARE(window.header().sectionSize(0), 77);
        });
    }

    void aHiddenColumnKeepsItsWidthOverManyRuns()
    {
        visit(m_file, arrange);
        visit(m_file, [](Window &window) { QVERIFY(window.header().isSectionHidden(0)); });
        visit(m_file, [](Window &window) {
            window.header().showSection(0);
            QCOMPARE(window.header().sectionSize(0), 77);
        });
    }

    void aMaximizedWindowOpensMaximized()
    {
        visit(m_file, [](Window &window) { window.showMaximized(); });
        visit(m_file, [](Window &window) {
            QVERIFY(window.isMaximized());
            window.showNormal();
            QCOMPARE(window.size(), firstSize);
        });
    }

    void theNearestPlaceOnAScreen_data()
    {
        QTest::addColumn<QRect>("left");
        QTest::addColumn<QRect>("placed");
        const QRect fits(100, 100, 400, 300);
        QTest::newRow("on one") << fits << fits;
        QTest::newRow("on the second") << QRect(1100, 50, 400, 300) << QRect(1100, 50, 400, 300);
        QTest::newRow("on both") << QRect(900, 50, 400, 300) << QRect(1000, 50, 400, 300);
        QTest::newRow("more on the first") << QRect(700, 50, 400, 300) << QRect(600, 50, 400, 300);
        QTest::newRow("on none") << QRect(5000, -900, 400, 300) << QRect(600, 20, 400, 300);
        QTest::newRow("too wide") << QRect(100, 100, 4000, 300) << QRect(0, 100, 1000, 300);
        QTest::newRow("too large") << QRect(-9, -9, 4000, 3000) << QRect(0, 20, 1000, 700);
    }

    void theNearestPlaceOnAScreen()
    {
        QFETCH(QRect, left);
        QFETCH(QRect, placed);
        const QList<QRect> screens {{0, 20, 1000, 700}, {1000, 0, 800, 600}};
        QCOMPARE(onScreen(left, screens), placed);
        QCOMPARE(onScreen(left, {}), left);
    }

    void noWindowOpensOffTheScreen_data()
    {
        QTest::addColumn<QRect>("left");
        QTest::newRow("to the right") << QRect(100000, 10, 400, 300);
        QTest::newRow("to the left") << QRect(-3000, 10, 400, 300);
        QTest::newRow("above") << QRect(10, -3000, 400, 300);
        QTest::newRow("half below") << QRect(
            10, QGuiApplication::primaryScreen()->size().height() - 100, 400, 300);
        QTest::newRow("too large") << QRect(-10, -10, 20000, 20000);
    }

    void noWindowOpensOffTheScreen()
    {
        QFETCH(QRect, left);
        visit(m_file, [&](Window &window) { window.setGeometry(left); });
        visit(m_file, [](Window &window) { QVERIFY(isOnScreen(window)); });
    }

    void dialogsOpenWhereTheyWere()
    {
        QPoint place;
        for (int run = 0; run < 2; ++run) {
            WindowMemory memory(m_file);
            QWidget main;
            memory.keepChildrenOf(main);
            main.show();
            QDialog dialog(&main);
            dialog.setObjectName(u"Dialog1"_s);
            QDialog inner(&dialog);
            inner.setObjectName(u"Inner"_s);
            for (QDialog *window : {&dialog, &inner}) {
                window->show();
                if (run == 0) {
                    window->setGeometry(150, 140, 310, 210);
                    place = window->pos();
                }
                QCOMPARE(window->size(), QSize(310, 210));
                QCOMPARE(window->pos(), place);
                window->reject();
                window->show();
                QCOMPARE(window->pos(), place);
            }
        }
    }

    void boxesOfTheToolkitAreLeftAlone()
    {
        WindowMemory memory(m_file);
        QWidget main;
        memory.keepChildrenOf(main);
        QMessageBox box(&main);
        box.setObjectName(u"box"_s);
        box.show();
        box.hide();
        QDialog nameless(&main);
        nameless.show();
        nameless.hide();
        memory.save();
        QVERIFY(!m_home->read(u"quillon/windows.ini"_s).contains("place"));
    }

    void aBrokenFileCostsTheMemoryAndNothingElse_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("junk") << "\x00\xff[[[\n=\n@Variant(\x00\x00\x7f\xff)\n;%zz"_ba;
        QTest::newRow("zeros") << QByteArray(5000, '\0');
        QTest::newRow("another layout")
            << QByteArray("[General]\nversion=99\n[columns]\ntable\\order=2, 1, 0\n"
                          "table\\widths=9, 9, 9\ntable\\hidden=0, 0, 0\n");
        const QByteArray known = "[General]\nversion=1\n";
        QTest::newRow("a place without a size")
            << QByteArray(known + "[windows]\nSome\\place=10, 10, 0, 0\n");
        QTest::newRow("half a place") << QByteArray(known + "[windows]\nSome\\place=10, 10, 50\n");
        QTest::newRow("a place out of this world")
            << QByteArray(known + "[windows]\nSome\\place=2147483647, 10, 2147483647, 90\n");
        QTest::newRow("junk for a place") << QByteArray(
            known + "[windows]\nSome\\place=@ByteArray(\\x1\\xd9)\nSome\\maximized=@Invalid()\n");
        QTest::newRow("words for numbers")
            << QByteArray(known + "[windows]\nSome\\between=a, b\n[sorting]\nlog=x, y\n");
        QTest::newRow("too many panes") << QByteArray(known + "[windows]\nSome\\between=1, 2, 3\n");
        QTest::newRow("no pane left") << QByteArray(known + "[windows]\nSome\\between=0, 0\n");
        QTest::newRow("panes below nothing") << QByteArray(known + "[windows]\nSome\\between=-5, 10\n");
        QTest::newRow("gaps in the columns") << QByteArray(
            known + "[columns]\ntable\\order=0, 0, 2\ntable\\widths=9, 9, 9\ntable\\hidden=0, 0, 0\n");
        QTest::newRow("no column left") << QByteArray(
            known + "[columns]\ntable\\order=0, 1, 2\ntable\\widths=9, 9, 9\ntable\\hidden=1, 1, 1\n");
        QTest::newRow("columns that are not") << QByteArray(known
            + "[columns]\ntable\\order=0, 1, 2, 3\ntable\\widths=9, 9, 9, 9\ntable\\hidden=0, 0, 0, 0\n");
        QTest::newRow("endless columns") << QByteArray(known
            + "[columns]\ntable\\order=0, 1, 2\ntable\\widths=9, 9, 2000000000\ntable\\hidden=0, 0, 0\n");
        QTest::newRow("widths missing")
            << QByteArray(known + "[columns]\ntable\\order=2, 1, 0\ntable\\hidden=0, 0, 0\n");
        QTest::newRow("far too long") << QByteArray(known + "[a]\nb=" + QByteArray(2 << 20, 'x'));
    }

    void aBrokenFileCostsTheMemoryAndNothingElse()
    {
        QFETCH(QByteArray, bytes);
        Window untouched;
        untouched.show();
        m_home->write(u"quillon/windows.ini"_s, bytes);
        visit(m_file, [&](Window &window) {
            QCOMPARE(window.size(), firstSize);
            QCOMPARE(window.splitter->sizes(), untouched.splitter->sizes());
            QCOMPARE(lookOf(window.header()), lookOf(untouched.header()));
            QVERIFY(!WindowMemory(m_file).sorting(u"log"_s, 12));
            window.resize(500, 350);
        });
        if (bytes.size() < 1 << 20) {
            visit(m_file, [](Window &window) { QCOMPARE(window.size(), QSize(500, 350)); });
        }
    }

    void whatCannotBeWrittenIsNotNeeded_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("a folder in its place") << u"folder"_s;
        QTest::newRow("a file in the folder's place") << u"plain/windows.ini"_s;
        QTest::newRow("a folder that takes nothing") << u"closed/windows.ini"_s;
        QTest::newRow("a file that takes nothing") << u"closed/there.ini"_s;
    }

    void whatCannotBeWrittenIsNotNeeded()
    {
        QFETCH(QString, file);
        m_home->write(u"folder/inside"_s, "x");
        m_home->write(u"plain"_s, "x");
        m_home->write(u"closed/there.ini"_s, "");
        QVERIFY(QFile::setPermissions(m_home->file(u"closed/there.ini"_s), QFile::ReadOwner));
        QVERIFY(QFile::setPermissions(m_home->file(u"closed"_s), QFile::ReadOwner | QFile::ExeOwner));
        visit(m_home->file(file), [](Window &window) { window.resize(500, 350); });
        // Who may write everywhere finds it as it was.
        visit(m_home->file(file),
            [](Window &window) { QVERIFY(window.size() == firstSize || window.size() == QSize(500, 350)); });
        QCOMPARE(m_home->read(u"plain"_s), QByteArray("x"));
        QCOMPARE(m_home->read(u"folder/inside"_s), QByteArray("x"));
        QVERIFY(QFile::setPermissions(
            m_home->file(u"closed"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void forgettingBringsTheFirstLookBack()
    {
        visit(m_file, arrange);
        Window untouched;
        untouched.show();
        Window window;
        WindowMemory memory(m_file);
        memory.setSorting(u"log"_s, KeptSorting {3, true});
        visit(memory, window, [&](Window &shown) {
            QCOMPARE(shown.size(), QSize(500, 350));
            memory.forget();
            QCOMPARE(shown.size(), firstSize);
            QCOMPARE(shown.splitter->sizes(), untouched.splitter->sizes());
            QCOMPARE(lookOf(shown.header()), lookOf(untouched.header()));
        });
        QVERIFY(!memory.sorting(u"log"_s, 12));
        visit(m_file, [](Window &again) { QCOMPARE(again.size(), firstSize); });
    }

    void columnsThatCameLaterStandBehind()
    {
        visit(m_file, arrange);
        Window window;
        window.model.setColumnCount(5);
        window.header().hideSection(4);
        WindowMemory memory(m_file);
        visit(memory, window, [](Window &shown) {
            QCOMPARE(lookOf(shown.header()).order, QList({2, 0, 1, 3, 4}));
            QCOMPARE(lookOf(shown.header()).hidden, QList({1, 0, 0, 0, 1}));
        });
    }

    void aTickIsKept()
    {
        {
            WindowMemory memory(m_file);
            QVERIFY(!memory.isTicked(u"distances"_s));
            memory.setTicked(u"distances"_s, true);
            QVERIFY(memory.isTicked(u"distances"_s));
            QVERIFY(!memory.isTicked(u"other"_s));
        }
        WindowMemory memory(m_file);
        QVERIFY(memory.isTicked(u"distances"_s));
        memory.setTicked(u"distances"_s, false);
        QVERIFY(!WindowMemory(m_file).isTicked(u"distances"_s));
        memory.setTicked(u"distances"_s, true);
        memory.forget();
        QVERIFY(!memory.isTicked(u"distances"_s));
    }

    void theSortingIsKept()
    {
        const KeptSorting byFreq {2, true};
        {
            WindowMemory memory(m_file);
            QVERIFY(!memory.sorting(u"log"_s, 12));
            memory.setSorting(u"log"_s, byFreq);
        }
        WindowMemory memory(m_file);
        QCOMPARE(memory.sorting(u"log"_s, 12), std::optional(byFreq));
        QVERIFY(!memory.sorting(u"log"_s, 2));
        memory.setSorting(u"log"_s, std::nullopt);
        QVERIFY(!memory.sorting(u"log"_s, 12));
    }

    void aWindowThatGoesIsNotAskedAgain()
    {
        WindowMemory memory(m_file);
        auto window = std::make_unique<Window>();
        visit(memory, *window, arrange);
        window.reset();
        memory.save();
        memory.forget();
        QVERIFY(!m_home->read(u"quillon/windows.ini"_s).contains("place"));
    }

    void escapeCloses()
    {
        Window window;
        auto *field = new QLineEdit(&window);
        closeOnEscape(window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }

private:
    std::unique_ptr<TestDirectory> m_home;
    QString m_file;
};

QTEST_MAIN(TestWindowMemory)
#include "tst_windowmemory.moc"
