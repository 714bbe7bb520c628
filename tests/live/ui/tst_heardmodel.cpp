#include "live/ui/heardmodel.h"

#include <QSignalSpy>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

Station station(quint16 pi, qint64 groups)
{
    Station heard;
    heard.hertz = 98'500'000;
    heard.pi = pi;
    heard.groups = groups;
    heard.certain = true;
    heard.first = 1'000;
    heard.last = 1'000 + groups;
    return heard;
}

// The rows of which a cell was told since the last call, each once.
QList<int> takeRows(QSignalSpy &changed)
{
    QList<int> rows;
    while (!changed.isEmpty()) {
        const int row = changed.takeFirst().first().toModelIndex().row();
        if (!rows.contains(row)) {
            rows += row;
        }
    }
    return rows;
}

} // namespace

/// A view is told of what has changed in the table, and of nothing else.
class TestHeardModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatHasChangedAndNoMore()
    {
        HeardTable table;
        HeardModel model(table);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        table.note(station(0xD3C1, 5));
        table.note(station(0xD3C2, 5));
        model.refresh();
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(takeRows(changed), QList<int>());

        model.refresh();
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(takeRows(changed), QList<int>());

        table.note(station(0xD3C2, 6));
        model.refresh();
        QCOMPARE(takeRows(changed), QList<int> {1});
        model.refresh();
        QCOMPARE(takeRows(changed), QList<int>());

        table.note(station(0xD3C1, 6));
        table.note(station(0xD3C3, 6));
        model.refresh();
        QCOMPARE(takeRows(changed), QList<int> {0});
        QCOMPARE(inserted.size(), 2);
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(reset.size(), 0);
    }

    void rowsThatHaveGoneAreAResetOnce()
    {
        HeardTable table;
        table.note(station(0xD3C1, 5));
        HeardModel model(table);
        QCOMPARE(model.rowCount(), 1);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        table.clear();
        table.note(station(0xD3C2, 5));
        model.refresh();
        QCOMPARE(reset.size(), 1);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.index(0, HeardModel::Pi).data().toString(), u"D3C2"_s);
        model.refresh();
        QCOMPARE(reset.size(), 1);
        QCOMPARE(takeRows(changed), QList<int>());
    }
};

QTEST_MAIN(TestHeardModel)
#include "tst_heardmodel.moc"
