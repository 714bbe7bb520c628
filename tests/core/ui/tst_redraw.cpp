#include "loggingwindow.h"

#include <QLineEdit>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// Notes what changes in the grid and the form, with "drawn" behind it when the grid was drawing meanwhile.
class Changes : public QObject
{
public:
    explicit Changes(MainWindow &window)
    {
        const Grid &grid = window.grid();
        const auto note = [this, &grid](const QString &what) {
            m_seen.insert(grid.updatesEnabled() ? QString(what + u" drawn"_s) : what);
        };
        connect(grid.model(), &QAbstractItemModel::modelReset, this, [note] { note(u"rows"_s); });
        connect(grid.model(), &QAbstractItemModel::dataChanged, this, [note] { note(u"cells"_s); });
        connect(grid.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [note] { note(u"current row"_s); });
        connect(grid.verticalScrollBar(), &QScrollBar::valueChanged, this, [note] { note(u"place"_s); });
        connect(window.find<QLineEdit>("Text1"), &QLineEdit::textChanged, this, [note] { note(u"form"_s); });
    }

    [[nodiscard]] QStringList seen() const
    {
        QStringList seen(m_seen.begin(), m_seen.end());
        seen.sort();
        return seen;
    }

private:
    QSet<QString> m_seen;
};

} // namespace

class TestRedraw : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGridIsNotDrawnWhile_data();
    void theGridIsNotDrawnWhile();
};

void TestRedraw::theGridIsNotDrawnWhile_data()
{
    using Work = std::function<void(MainWindow &)>;
    QTest::addColumn<Work>("before");
    QTest::addColumn<Work>("work");
    QTest::addColumn<QStringList>("seen");
    const Work nothing = [](MainWindow &) {};
    const Work firstRow = [](MainWindow &window) {
        window.grid().setTopRow(1);
        window.clickRow(1);
    };
    QTest::newRow("it is filled") << nothing << Work([](MainWindow &window) { window.form().populateGrid(); })
                                  << QStringList {u"current row"_s, u"rows"_s};
    QTest::newRow("a row is loaded") << Work([](MainWindow &window) { window.grid().setFocus(); })
                                     << Work([](MainWindow &window) { window.key(Qt::Key_Return); })
                                     << QStringList {u"form"_s};
    QTest::newRow("a row is rewritten")
        << Work([](MainWindow &window) { window.clickRow(100); })
        << Work([](MainWindow &window) { window.click("Command3"); }) << QStringList {u"cells"_s};
    QTest::newRow("the row of an entry is rewritten, another being current") << Work([](MainWindow &window) {
        window.clickRow(99);
        window.grid().setRow(98);
    }) << Work([](MainWindow &window) {
        window.click("Command3");
    }) << QStringList {u"cells"_s, u"current row"_s};
    QTest::newRow("it is sorted by dates")
        << nothing << Work([](MainWindow &window) { window.clickHeading(0); })
        << QStringList {u"current row"_s, u"rows"_s};
    QTest::newRow("it is sorted by texts")
        << nothing << Work([](MainWindow &window) { window.clickHeading(1); })
        << QStringList {u"current row"_s, u"place"_s, u"rows"_s};
    QTest::newRow("a code is found") << firstRow << Work([](MainWindow &window) {
        window.answers.type(u"1063"_s);
        window.trigger("menuToolsFind");
    }) << QStringList {u"current row"_s, u"form"_s, u"place"_s};
    QTest::newRow("a result is shown") << Work([firstRow](MainWindow &window) {
        firstRow(window);
        window.type("Text1", u"104"_s);
        window.click("Command4");
    }) << Work([](MainWindow &window) { Q_EMIT window.list().lineActivated(0); })
                                       << QStringList {u"current row"_s, u"form"_s, u"place"_s};
}

void TestRedraw::theGridIsNotDrawnWhile()
{
    QFETCH(std::function<void(MainWindow &)>, before);
    QFETCH(std::function<void(MainWindow &)>, work);
    QFETCH(QStringList, seen);
    MainWindow window;
    window.start(numberedLog(100));
    before(window);
    const Changes changes(window);
    work(window);
    QCOMPARE(changes.seen().join(u','), seen.join(u','));
    QVERIFY(window.grid().updatesEnabled());
}

QTEST_MAIN(TestRedraw)
#include "tst_redraw.moc"
