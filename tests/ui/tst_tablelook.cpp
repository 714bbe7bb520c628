#include "ui/tablelook.h"

#include <QFontMetricsF>
#include <QHeaderView>
#include <QTableView>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

/// What the grid and the lists have in common.
class TestTableLook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void figuresLineUp();
    void rowsHaveOneHeight();
};

void TestTableLook::figuresLineUp()
{
    QTableView table;
    setTableLook(table);
    const QFontMetricsF metrics(table.font());
    const QString figures = u"0123456789"_s;
    for (const QChar figure : figures) {
        QCOMPARE(metrics.horizontalAdvance(figure), metrics.horizontalAdvance(u'0'));
    }
}

void TestTableLook::rowsHaveOneHeight()
{
    QTableView table;
    setTableLook(table);
    QCOMPARE(table.verticalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    QVERIFY(table.verticalHeader()->defaultSectionSize() > table.fontMetrics().height());
}

QTEST_MAIN(TestTableLook)
#include "tst_tablelook.moc"
