#include "stations/ui/stationcolumns.h"
#include "support/combos.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

const QByteArray named =
    "frequency;pi;ps;site;itu;latitude;longitude\r\n98.5;D3C3;MDR JUMP;Brocken;D;51.8;10.6\r\n";

class Shown
{
public:
    explicit Shown(const QByteArray &beginning, const CodePage &codePage = CodePage(1252))
        : dialog(beginning, u"list.csv"_s, codePage, nullptr)
    {
    }

    template<typename Widget>
    [[nodiscard]] Widget &find(const QString &name) const
    {
        auto *found = dialog.findChild<Widget *>(name);
        if (!found) {
            qFatal("no %s", qPrintable(name));
        }
        return *found;
    }
    /// The box above a column.
    [[nodiscard]] QComboBox &choice(int column) const
    {
        return *qobject_cast<QComboBox *>(find<QTableWidget>(u"beginning"_s).cellWidget(0, column));
    }

    StationColumns dialog;
};

} // namespace

class TestStationColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachEncodingStandsOnce_data()
    {
        QTest::addColumn<int>("codePage");
        QTest::addColumn<QStringList>("encodings");
        QTest::newRow("western") << 1252
                                 << QStringList {u"UTF-8"_s, u"UTF-16"_s, u"Windows-1252"_s,
                                        u"Windows-1250"_s, u"Windows-1251"_s, u"Windows-1253"_s,
                                        u"Windows-1254"_s, u"Windows-1257"_s};
        QTest::newRow("cyrillic") << 1251
                                  << QStringList {u"UTF-8"_s, u"UTF-16"_s, u"Windows-1251"_s,
                                         u"Windows-1250"_s, u"Windows-1252"_s, u"Windows-1253"_s,
                                         u"Windows-1254"_s, u"Windows-1257"_s};
    }

    void eachEncodingStandsOnce()
    {
        QFETCH(int, codePage);
        const Shown shown(named, CodePage(codePage));
        QTEST(itemsOf(shown.find<QComboBox>(u"encoding"_s)), "encodings");
    }

    void theFirstColumnAloneMakesAHeading_data()
    {
        QTest::addColumn<QByteArray>("beginning");
        QTest::addColumn<bool>("hasHeading");
        QTest::newRow("all named") << named << true;
        QTest::newRow("the first one named") << QByteArray("pi;x;y\r\nD3C3;1;2\r\n") << true;
        QTest::newRow("none named") << QByteArray("D3C3;1;2\r\nD3C4;1;2\r\n") << false;
    }

    void theFirstColumnAloneMakesAHeading()
    {
        QFETCH(QByteArray, beginning);
        QFETCH(bool, hasHeading);
        const Shown shown(beginning);
        QCOMPARE(shown.find<QCheckBox>(u"hasHeading"_s).isChecked(), hasHeading);
        QCOMPARE(shown.dialog.layoutOfFile().hasHeading, hasHeading);
    }

    void theBoxesHaveTheirRoom()
    {
        const Shown shown(named);
        const auto &table = shown.find<QTableWidget>(u"beginning"_s);
        QCOMPARE(table.rowCount(), 3);
        QVERIFY(table.rowHeight(0) >= shown.choice(0).sizeHint().height());
        QCOMPARE(table.item(2, 2)->text(), u"MDR JUMP"_s);
    }

    void aFieldIsInOneColumn()
    {
        const Shown shown(named);
        const int pi = shown.choice(1).currentIndex();
        QVERIFY(pi > 0);
        shown.choice(2).setCurrentIndex(pi);
        QCOMPARE(shown.choice(1).currentIndex(), 0);
        QCOMPARE(shown.dialog.layoutOfFile().columns.at(static_cast<std::size_t>(pi) - 1), 2);
    }

    void withoutWhatIsNeededThereIsNoOk()
    {
        const Shown shown(named);
        const auto &ok = shown.find<QPushButton>(u"OKButton"_s);
        QVERIFY(ok.isEnabled());
        QCOMPARE(shown.find<QLabel>(u"missing"_s).text(), QString());
        shown.choice(0).setCurrentIndex(0);
        QVERIFY(!ok.isEnabled());
        QVERIFY(shown.find<QLabel>(u"missing"_s).text().startsWith(u"Say which column holds: "_s));
    }

    void anEmptyBeginningHasNoColumns()
    {
        const Shown shown({});
        QCOMPARE(shown.find<QTableWidget>(u"beginning"_s).columnCount(), 0);
        QVERIFY(!shown.find<QPushButton>(u"OKButton"_s).isEnabled());
    }
};

QTEST_MAIN(TestStationColumns)
#include "tst_stationcolumns.moc"
