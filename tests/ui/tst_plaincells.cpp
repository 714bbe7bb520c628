#include "ui/plaincells.h"
#include "ui/tablelook.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const QStringList texts {u"RNE_CLAS"_s, u"28/06/2009 15:55:00"_s, u"Málaga/Mijas"_s, u""_s, u" "_s, u"87.6"_s,
    u"a text that is by far too long for the width of its column"_s, u"<b>as it stands</b>"_s, u"&amp;"_s,
    u"two\nlines"_s, u"\u2066مرحبا"_s, u"Łódź 😀"_s, QString(200, u'x'), u"Ελλάδα"_s};

QImage pictureWith(QTableView &table, QAbstractItemDelegate *delegate)
{
    table.setItemDelegate(delegate);
    return table.grab().toImage();
}

} // namespace

/// Cells that are drawn quickly look as those that the style draws.
class TestPlainCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cellsLookAsTheStyleDrawsThem_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("text");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<int>("points");
        QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black) << true << 9;
        QTest::newRow("dark") << QColor(0x1f2123) << QColor(0xe4e6e8) << true << 9;
        QTest::newRow("disabled") << QColor(Qt::white) << QColor(Qt::black) << false << 9;
        QTest::newRow("large letters") << QColor(Qt::white) << QColor(Qt::black) << true << 17;
    }

    void cellsLookAsTheStyleDrawsThem()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        QFETCH(bool, enabled);
        QFETCH(int, points);
        QPalette palette;
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Disabled, QPalette::Text, Qt::gray);
        QFont font;
        font.setPointSize(points);
        QTableView table;
        table.setPalette(palette);
        table.setFont(font);
        fill(table);
        table.setEnabled(enabled);
        QStyledItemDelegate usual;
        PlainCells plain;
        const QImage expected = pictureWith(table, &usual);
        QCOMPARE(pictureWith(table, &plain), expected);
        // The same again, with every text kept from before, and with other letters.
        QCOMPARE(pictureWith(table, &plain), expected);
        font.setPointSize(points + 3);
        table.setFont(font);
        QCOMPARE(pictureWith(table, &plain), pictureWith(table, &usual));
        table.setColumnWidth(1, 31);
        QCOMPARE(pictureWith(table, &plain), pictureWith(table, &usual));
    }

    void aChosenRowLooksAsTheStyleDrawsIt()
    {
        QTableView table;
        fill(table);
        table.show();
        table.setCurrentIndex(table.model()->index(2, 1));
        table.setFocus();
        QStyledItemDelegate usual;
        PlainCells plain;
        QCOMPARE(pictureWith(table, &plain), pictureWith(table, &usual));
    }

    void chosenRowsLookAsTheStyleDrawsThem_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("withFocus");
        QTest::newRow("with the focus") << true << true;
        QTest::newRow("without the focus") << true << false;
        QTest::newRow("disabled") << false << false;
    }

    void chosenRowsLookAsTheStyleDrawsThem()
    {
        QFETCH(bool, enabled);
        QFETCH(bool, withFocus);
        QTableView table;
        fill(table);
        table.setSelectionMode(QAbstractItemView::ExtendedSelection);
        QPalette palette = table.palette();
        palette.setColor(QPalette::Disabled, QPalette::Highlight, Qt::darkGray);
        palette.setColor(QPalette::Inactive, QPalette::HighlightedText, Qt::yellow);
        table.setPalette(palette);
        table.show();
        table.selectAll();
        if (withFocus) {
            table.setFocus();
            table.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&table));
        } else {
            QApplication::setActiveWindow(nullptr);
        }
        table.setEnabled(enabled);
        QStyledItemDelegate usual;
        PlainCells plain;
        const QImage expected = pictureWith(table, &usual);
        QCOMPARE(pictureWith(table, &plain), expected);
        table.clearSelection();
        QVERIFY(pictureWith(table, &plain) != expected);
    }

    void anotherTextIsDrawnAnew()
    {
        QTableView table;
        fill(table);
        QStyledItemDelegate usual;
        PlainCells plain;
        (void)pictureWith(table, &plain);
        table.model()->setData(table.model()->index(0, 0), u"Other"_s);
        QCOMPARE(pictureWith(table, &plain), pictureWith(table, &usual));
    }

private:
    void fill(QTableView &table)
    {
        auto *model = new QStandardItemModel(static_cast<int>(texts.size()), 3, &table);
        for (int row = 0; row < model->rowCount(); ++row) {
            for (int column = 0; column < 3; ++column) {
                model->setData(model->index(row, column), texts.at(row));
                model->setData(model->index(row, column),
                    static_cast<int>((column == 1 ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter),
                    Qt::TextAlignmentRole);
            }
        }
        QFont bold;
        bold.setBold(true);
        model->setData(model->index(1, 0), bold, Qt::FontRole);
        table.setModel(model);
        setTableLook(table);
        table.setColumnWidth(0, 97);
        table.setColumnWidth(1, 140);
        table.setColumnWidth(2, 54);
        table.resize(330, 420);
    }
};

QTEST_MAIN(TestPlainCells)
#include "tst_plaincells.moc"
