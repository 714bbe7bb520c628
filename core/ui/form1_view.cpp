#include "core/ui/form1.h"

#include "geo/ui/mapdock.h"
#include "geo/ui/mapscene.h"
#include "live/frequency.h"
#include "live/ui/frequencycells.h"
#include "live/ui/receiverdock.h"
#include "platform/files.h"
#include "stats/maplog.h"
#include "stats/novelty.h"
#include "txdb/derivedcells.h"
#include "ui/anywherekey.h"
#include "ui/firststeps.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/statustext.h"
#include "ui/windowmemory.h"
#include "ui_form1.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QMenu>
#include <QScopeGuard>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

void Form1::wireView()
{
    m_rows.setDerived([this](const LogEntry &entry, qint32 number, GridColumn column) {
        const auto home = homePosition(m_config.settings());
        switch (column) {
        case GridColumn::Azimuth:
            return azimuthCell(entry, transmitters(), home);
        case GridColumn::Locator:
            return locatorCell(entry, transmitters());
        case GridColumn::New:
            return shortText(novelty().marks(number));
        default:
            return mufCell(entry, transmitters(), home);
        }
    });
    for (int column = 0; column < allColumnCount; ++column) {
        QAction *tick =
            m_ui->menuViewColumns->addAction(logColumn(static_cast<GridColumn>(column)).caption.toString());
        tick->setCheckable(true);
        tick->setChecked(column < gridColumnCount);
        connect(tick, &QAction::toggled, this, [this, column](bool shown) { showColumn(column, shown); });
    }
    m_ui->menuViewColumns->addSeparator();
    connect(m_ui->menuViewColumns->addAction(u"As at first"_s), &QAction::triggered, this,
        [this] { columnsAsAtFirst(); });
    connect(m_ui->menuViewColumns, &QMenu::aboutToShow, this, [this] { tickColumns(); });
    connect(m_ui->Grid1->horizontalHeader(), &QWidget::customContextMenuRequested, this,
        [this](const QPoint &position) {
            m_ui->menuViewColumns->popup(m_ui->Grid1->horizontalHeader()->mapToGlobal(position));
        });
    connect(m_ui->Grid1, &QWidget::customContextMenuRequested, this, &Form1::showGridMenu);
    connect(m_ui->menuViewDistances, &QAction::toggled, this, &Form1::menuViewDistances_Toggled);
    wireMap();
    wireReceiver();
}

// The last column that is shown stays.
void Form1::showColumn(int column, bool shown)
{
    if (!shown && m_ui->Grid1->shownColumns().size() < 2) {
        tickColumns();
        return;
    }
    m_ui->Grid1->setColumnHidden(column, !shown);
}

void Form1::tickColumns()
{
    const QList<QAction *> ticks = m_ui->menuViewColumns->actions();
    for (int column = 0; column < allColumnCount; ++column) {
        const QSignalBlocker quiet(ticks[column]);
        ticks[column]->setChecked(!m_ui->Grid1->isColumnHidden(column));
    }
}

void Form1::columnsAsAtFirst()
{
    QHeaderView &header = *m_ui->Grid1->horizontalHeader();
    for (int column = 0; column < allColumnCount; ++column) {
        header.moveSection(header.visualIndex(column), column);
    }
    m_ui->Grid1->writeGridHeader();
    tickColumns();
}

// What was kept of the look: called when window and log are there.
void Form1::restoreLook()
{
    if (m_options.lookFolder.isEmpty()) {
        return;
    }
    m_memory = new WindowMemory(filePath(m_options.lookFolder, u"windows.ini"_s), this);
    m_memory->keep(*this);
    m_memory->keepChildrenOf(*this);
    m_memory->keepDocks(*this);
    m_ui->menuViewDistances->setChecked(m_memory->isTicked(u"distances"_s));
    m_memory->keep(*m_ui->Grid1->horizontalHeader(), u"log"_s);
    m_ui->Grid1->setNotesWidthGiven(m_memory->isTicked(u"notesWidth"_s));
    if (const auto kept = m_memory->sorting(u"log"_s, allColumnCount)) {
        m_ui->Grid1->sortBy(LogRows::Sorting {static_cast<GridColumn>(kept->column), kept->descending});
    }
}

void Form1::keepLook()
{
    if (m_memory) {
        m_memory->setTicked(u"notesWidth"_s, m_ui->Grid1->isNotesWidthGiven());
        const auto sorting = m_rows.sorting();
        m_memory->setSorting(u"log"_s,
            sorting ? std::optional(KeptSorting {static_cast<int>(sorting->column), sorting->descending})
                    : std::nullopt);
        m_memory->save();
    }
}

// Reset Windows and Columns.
void Form1::menuViewReset_Click()
{
    if (m_memory) {
        m_memory->forget();
        // What an Add writes is no look that is put back.
        m_memory->setTicked(u"distances"_s, m_ui->menuViewDistances->isChecked());
    }
    columnsAsAtFirst();
    m_ui->Grid1->sortBy(std::nullopt);
    m_map->hide();
    m_receiver->hide();
}

void Form1::wireFirstSteps()
{
    m_firstSteps = new FirstSteps(m_ui->Grid1->viewport());
    connect(m_firstSteps, &FirstSteps::setupWanted, m_ui->menuSetup, &QAction::trigger);
    connect(
        m_firstSteps, &FirstSteps::quickAddWanted, m_form->button(u"Command14"_s), &QAbstractButton::click);
    connect(m_firstSteps, &FirstSteps::importWanted, this, [this] {
        m_ui->menuImport->popup(m_firstSteps->mapToGlobal(m_firstSteps->rect().bottomLeft()));
        m_ui->menuImport->setActiveAction(m_ui->menuImport->actions().value(0));
    });
    if (auto *distances = findChild<QAction *>(u"menuViewDistances"_s)) {
        m_firstSteps->offer(*distances);
    }
    tellEmpty();
}

// What an empty grid says, by what is the reason.
void Form1::tellEmpty()
{
    if (!m_firstSteps) {
        return;
    }
    Grid &grid = *m_ui->Grid1;
    if (log().count() > 0) {
        grid.setEmptyText(u"No reception of the log is shown. Esc in the filter's box shows all."_s);
    } else if (!m_unreadable.isEmpty()) {
        grid.setEmptyText(m_unreadable);
    } else {
        grid.setEmptyText(
            u"No receptions yet. Press F5 to log the first one quickly, or Ctrl+N to type all of it."_s,
            m_firstSteps);
    }
}

// A dock at the right, hidden at first, and its entry in the View menu.
QAction *Form1::addDock(QDockWidget &dock, const QString &text, const QString &name, Qt::Key key)
{
    addDockWidget(Qt::RightDockWidgetArea, &dock);
    closeOnEscape(dock);
    dock.hide();
    QAction *view = dock.toggleViewAction();
    view->setText(text);
    view->setObjectName(name);
    view->setShortcut(key);
    m_ui->menuView->insertAction(m_ui->menuViewDistances, view);
    return view;
}

void Form1::wireMap()
{
    m_map = new MapDock(this, *m_options.fileCalls);
    addDock(*m_map, u"&Map"_s, u"menuViewMap"_s, Qt::Key_F7);
    connect(m_map, &QDockWidget::visibilityChanged, this, [this] { refreshMap(); });
    connect(m_map, &MapDock::receptionChosen, this, [this](qint32 entry) {
        guarded(this, [this, entry] {
            makeShown(entry);
            (void)loadRow(entry);
            m_ui->Grid1->showRow(m_ui->Grid1->rowOfEntry(entry));
        });
    });
    connect(m_map, &MapDock::siteChosen, this, [this](const QString &name, const QString &country) {
        m_ui->filterBar->setText(
            filterTextOf(GridColumn::Transmitter, name) + u' ' + filterTextOf(GridColumn::Country, country));
    });
    connect(m_map, &MapDock::unplacedWanted, this, [this](const QList<qint32> &entries) {
        showEntries(entries, u"Receptions without a place on the map"_s);
    });
    connect(m_map, &MapDock::setupWanted, this, [this] { menuSetup_Click(); });
    connect(m_map, &MapDock::pictureSaved, this,
        [this](const QString &path) { tell(u"Picture of the map saved as "_s + path); });
}

void Form1::refreshMap()
{
    if (m_map->isVisible()) {
        m_map->setData(mapData(log(), transmitters(), m_rows.shown(), m_config.settings(), UtcNow()));
        showPath();
    }
}

// The path to the reception in the form.
void Form1::showPath()
{
    std::optional<MapPath> path;
    if (m_selected >= 0 && m_selected < log().count()) {
        const LogEntry &entry = log().entry(m_selected);
        if (const auto found = transmitters().find(entry.transmitter, entry.country)) {
            const Transmitter &site = transmitters().row(*found);
            if (const auto place = positionFrom(site.latitude, site.longitude)) {
                path = MapPath {site.name, *place};
            }
        }
    }
    m_map->setPath(path);
}

void Form1::showOnMap()
{
    m_map->show();
    m_map->raise();
    showPath();
}

void Form1::wireReceiver()
{
    m_receiver = new ReceiverDock(
        log(), [this](const HeardReception &reception) { return logReception(reception); },
        m_options.lookFolder, this, *m_options.fileCalls);
    const QAction *view = addDock(*m_receiver, u"&Receiver"_s, u"menuViewReceiver"_s, Qt::Key_F8);
    m_ui->menuView->insertSeparator(m_ui->menuViewDistances);
    connect(view, &QAction::triggered, this, [this] { floatWithoutRoom(*m_receiver); });
    connect(new AnywhereKey(Qt::Key_F6, *this), &AnywhereKey::pressed, this,
        [this] { guarded(this, [this] { m_receiver->logHeard(); }); });
    connect(m_receiver, &ReceiverDock::newStation, m_status, &QLabel::setText);
    const auto tables = findChildren<QTableView *>();
    for (QTableView *const table : tables) {
        if (!m_receiver->isAncestorOf(table)) {
            new FrequencyCells(*table, *m_receiver);
        }
    }
}

// On a screen that has no room for it beside the log, a dock is a window of its own. What it needs is known
// only when it is shown.
void Form1::floatWithoutRoom(QDockWidget &dock)
{
    QTimer::singleShot(0, this, [this, &dock] {
        const QRect all = screen()->availableGeometry();
        if (dock.isVisible() && !dock.isFloating() && minimumSizeHint().width() > all.width()) {
            dock.setFloating(true);
            layout()->activate();
            resize(std::min(width(), all.width()), height());
            dock.move(all.right() - dock.frameGeometry().width(), dock.y());
        }
    });
}

// Logs what the receiver hears, beside whatever stands in the form. While other work adds to the log, it
// waits: it is no part of that work's step.
bool Form1::logReception(const HeardReception &reception)
{
    if (!m_longWork && !m_importing) {
        logNow(reception);
        return true;
    }
    const auto isSame = [&](const HeardReception &other) {
        return other.entry.piCode == reception.entry.piCode && other.entry.freq == reception.entry.freq;
    };
    if (std::ranges::none_of(m_waiting, isSame)) {
        m_waiting.push_back(reception);
    }
    m_status->setText(changeName(u"To be logged when this work is over:"_s, reception.entry));
    return true;
}

void Form1::logWaiting()
{
    // One that fails must not keep the others waiting.
    while (!m_waiting.empty() && !m_longWork && !m_importing) {
        const HeardReception reception = m_waiting.front();
        m_waiting.erase(m_waiting.begin());
        guarded(this, [&] { logNow(reception); });
    }
}

void Form1::logNow(const HeardReception &reception)
{
    SiteChanges sites;
    if (auto change = transmitters().addition({reception.entry.transmitter, reception.entry.country,
            reception.latitude, reception.longitude, {}})) {
        sites.push_back(std::move(*change));
    }
    LogEntry entry = reception.entry;
    measure(entry, sites);
    const qint32 number = log().count();
    const auto told = qScopeGuard([&] {
        if (log().count() > number) {
            tellHidden(changeName(u"Added"_s, entry), number);
            showNewBadge(number);
        }
    });
    m_document.commit({changeName(u"Log"_s, entry), LogChange::addition(entry), std::move(sites)},
        LogDocument::Saving::WithSites);
}

void Form1::tuneTo(int row)
{
    if (const auto hertz = hertzOf(m_ui->Grid1->text(row, GridColumn::Freq))) {
        m_receiver->tune(*hertz);
    }
}

} // namespace quillon
