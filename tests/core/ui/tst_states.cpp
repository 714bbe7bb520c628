#include "loggingwindow.h"

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// Presses the buttons of these names one after another; "row" clicks the only row.
void doSteps(MainWindow &window, const QStringList &steps)
{
    for (const QString &step : steps) {
        if (step == u"row") {
            window.clickRow(1);
        } else {
            window.click(step);
        }
    }
}

} // namespace

class TestStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStatesOfTheForm_data();
    void theStatesOfTheForm();
    void theFormTurnsYellowAndBack_data();
    void theFormTurnsYellowAndBack();
    void yellowIsReadable();
};

void TestStates::theStatesOfTheForm_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("newCaption");
    const QStringList newEntry {u"Command3"_s, u"Command9"_s, u"Command15"_s};
    const QStringList editing {u"Command1"_s};
    const QStringList &browse = lockedInBrowseState();
    QTest::newRow("start") << QStringList() << browse << -1 << u"New"_s;
    QTest::newRow("New") << QStringList {u"Command2"_s} << newEntry << -1 << u"Cancel"_s;
    QTest::newRow("New, Cancel") << QStringList {u"Command2"_s, u"Command2"_s} << browse << -1 << u"New"_s;
    QTest::newRow("a row") << QStringList {u"row"_s} << editing << 0 << u"New"_s;
    QTest::newRow("a row, New") << QStringList {u"row"_s, u"Command2"_s} << newEntry << -1 << u"Cancel"_s;
    QTest::newRow("a row, New, Cancel")
        << QStringList {u"row"_s, u"Command2"_s, u"Command2"_s} << browse << -1 << u"New"_s;
    QTest::newRow("New, a row") << QStringList {u"Command2"_s, u"row"_s} << editing << 0 << u"Cancel"_s;
    QTest::newRow("New, a row, Cancel")
        << QStringList {u"Command2"_s, u"row"_s, u"Command2"_s} << browse << 0 << u"New"_s;
    QTest::newRow("a row, Update") << QStringList {u"row"_s, u"Command3"_s} << browse << 0 << u"New"_s;
    QTest::newRow("a row, Clone") << QStringList {u"row"_s, u"Command9"_s} << newEntry << -1 << u"New"_s;
    QTest::newRow("a row, Clone, Add")
        << QStringList {u"row"_s, u"Command9"_s, u"Command1"_s} << browse << -1 << u"New"_s;
    QTest::newRow("a row, Delete") << QStringList {u"row"_s, u"Command15"_s} << browse << 0 << u"New"_s;
}

void TestStates::theStatesOfTheForm()
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, off);
    QFETCH(int, selected);
    QFETCH(QString, newCaption);
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    doSteps(window, steps);
    QCOMPARE(disabled(window), off);
    QCOMPARE(window.form().selected(), selected);
    QCOMPARE(window.caption("Command2"), newCaption);
    QCOMPARE(window.answers.takeTexts(), QStringList());
}

void TestStates::theFormTurnsYellowAndBack_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<bool>("yellow");
    QTest::newRow("New") << QStringList {u"Command2"_s} << false;
    QTest::newRow("a row") << QStringList {u"row"_s} << true;
    QTest::newRow("New leaves it") << QStringList {u"row"_s, u"Command2"_s} << true;
    QTest::newRow("Cancel leaves it") << QStringList {u"row"_s, u"Command2"_s, u"Command2"_s} << true;
    QTest::newRow("Clone leaves it") << QStringList {u"row"_s, u"Command9"_s} << true;
    QTest::newRow("Update leaves it") << QStringList {u"row"_s, u"Command3"_s} << true;
    QTest::newRow("Add ends it") << QStringList {u"row"_s, u"Command9"_s, u"Command1"_s} << false;
    QTest::newRow("Delete ends it") << QStringList {u"row"_s, u"Command15"_s} << false;
}

void TestStates::theFormTurnsYellowAndBack()
{
    QFETCH(QStringList, steps);
    QFETCH(bool, yellow);
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    const QColor normal = window.find<QWidget>("Text1")->palette().color(QPalette::Base);
    doSteps(window, steps);
    QCOMPARE(window.yellow().size(), yellow ? 12 : 0);
    QCOMPARE(window.find<QWidget>("uid")->palette().color(QPalette::Base), normal);
    if (!yellow) {
        QCOMPARE(window.find<QWidget>("Text1")->palette().color(QPalette::Base), normal);
    }
}

void TestStates::yellowIsReadable()
{
    MainWindow window;
    window.start(oneEntry, oneTransmitter);
    window.clickRow(1);
    const QStringList yellow = window.yellow();
    QCOMPARE(yellow.size(), 12);
    for (const QString &name : yellow) {
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QPalette palette = window.find<QWidget>(name)->palette();
            QCOMPARE(palette.color(group, QPalette::Base), QColor(255, 255, 0));
            QCOMPARE(palette.color(group, QPalette::Text), QColor(Qt::black));
        }
    }
}

QTEST_MAIN(TestStates)
#include "tst_states.moc"
