#include "import/ui/importtable.h"

#include "core/logfields.h"
#include "import/ui/importmodel.h"
#include "ui/tablelook.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace quillon {

using namespace Qt::StringLiterals;

ImportTable::ImportTable(QWidget *parent)
    : QTableView(parent)
{
    setTableLook(*this);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    horizontalHeader()->setSectionsClickable(false);
}

void ImportTable::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void ImportTable::chooseWidths()
{
    constexpr int padding = 16;
    const auto setWidth = [this](int column, const QString &usual) {
        const QString caption = model()->headerData(column, Qt::Horizontal).toString();
        const int width = qMax(fontMetrics().horizontalAdvance(usual),
            horizontalHeader()->fontMetrics().horizontalAdvance(caption));
        setColumnWidth(column, width + padding);
    };
    setWidth(ImportModel::State, u"[x] Already there"_s);
    setWidth(ImportModel::Line, u"32000"_s);
    setWidth(ImportModel::Reason, u"In the log: 12/06/2010 18:22:05 87.6"_s);
    for (int i = 0; i < gridColumnCount; ++i) {
        setWidth(ImportModel::firstField + i, logColumn(static_cast<GridColumn>(i)).usual.toString());
    }
}

void ImportTable::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    paintEmptyText(*this, m_emptyText);
}

void ImportTable::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier) {
        Q_EMIT tickPressed();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

} // namespace quillon
