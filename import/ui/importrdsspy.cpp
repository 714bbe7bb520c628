#include "import/ui/importrdsspy.h"

#include "import/ui/foldertext.h"
#include "platform/windowspath.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/onelinefields.h"
#include "ui/plaintip.h"
#include "ui/problemwatch.h"

#include "ui_importrdsspy.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

importRDSSpy::importRDSSpy(
    Config &config, const Regional &regional, AddEntry addEntry, SaveRest saveRest, QWidget *parent)
    : QDialog(parent)
    , m_config(config)
    , m_regional(regional)
    , m_addEntry(std::move(addEntry))
    , m_saveRest(std::move(saveRest))
    , ui(std::make_unique<Ui::importRDSSpy>())
{
    ui->setupUi(this);
    keepFieldsOnOneLine(*this);
    watchForProblems(*ui->problem, m_regional.codePage, {{ui->Text1, FieldKind::Freq}});
    setAttribute(Qt::WA_DeleteOnClose);
    ui->List1->setHeadings({{u"Date and time"_s, u"*2010/06/12 18:22:05"_s}, {u"PI code"_s, u"D3C3"_s, true},
        {u"RDS name"_s, u"ANTENNE1"_s}});
    ui->List1->horizontalHeader()->setSectionsClickable(false);
    ui->List1->installEventFilter(this);
    connect(ui->List1->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this] { guarded(this, [this] { List1_Click(); }); });
    connect(
        ui->List1, &QTableView::doubleClicked, this, [this] { guarded(this, [this] { List1_DblClick(); }); });
    const auto onClick = [this](QPushButton *button, void (importRDSSpy::*handler)()) {
        connect(button, &QPushButton::clicked, this,
            [this, handler] { guarded(this, [this, handler] { (this->*handler)(); }); });
    };
    onClick(ui->Command1, &importRDSSpy::Command1_Click);
    onClick(ui->Command2, &importRDSSpy::Command2_Click);
    onClick(ui->Command3, &importRDSSpy::Command3_Click);
    onClick(ui->Command4, &importRDSSpy::Command4_Click);
    onClick(ui->Command5, &importRDSSpy::Command5_Click);
    onClick(ui->Command6, &importRDSSpy::Command6_Click);
}

importRDSSpy::~importRDSSpy() = default;

void importRDSSpy::start()
{
    show();
    raise();
    activateWindow();
    ui->Text2->setText(m_config.settings().timeOffset);
    ui->List1->setFocus();
    populateList1(resolveDirectory(m_config.settings().rdsSpyDirectory, WindowsPlaces::ofProcess()));
}

void importRDSSpy::populateList1(const QString &folder)
{
    showFolder(folder);
    const QString answer =
        inputBox(this, u"Enter date of logs to import?"_s, u"Select Import date"_s, dateText(localNow()));
    if (answer.isEmpty()) {
        return;
    }
    const std::optional<Day> day = dayOf(answer, m_regional.months);
    if (!day) {
        showMessage(this, u"Invalid date format"_s);
        return;
    }
    m_day = dateText(day->first);
    setLines({});
    showFolder(folder);
    const RdsSpyListing listing = listRdsSpyFolder(folder, *day, m_regional);
    setLines(listing.lines);
    ui->List1->setListIndex(ui->List1->count() - 1);
    // A day without receptions can be imported too: it stores the offset.
    ui->Command3->setEnabled(true);
    if (listing.failure) {
        throw *listing.failure;
    }
}

void importRDSSpy::reject()
{
    if (m_importing) {
        m_stopWanted = true;
    } else {
        QDialog::reject();
    }
}

bool importRDSSpy::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui->List1 && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Space:
            guarded(this, [this] { List1_DblClick(); });
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            ui->Command3->click();
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}

// The receptions: a row has become the highlighted one.
void importRDSSpy::List1_Click()
{
    const bool highlighted = ui->List1->listIndex() >= 0;
    ui->Command5->setEnabled(highlighted);
    ui->Command6->setEnabled(highlighted);
    if (highlighted && !m_importing) {
        ui->Command3->setEnabled(true);
    }
}

// The receptions: a double-click or Space selects or deselects the highlighted one.
void importRDSSpy::List1_DblClick()
{
    const int row = ui->List1->listIndex();
    if (row < 0) {
        return;
    }
    if (isMarked(ui->List1->text(row))) {
        unmarkRow(row);
    } else {
        markRow(row);
    }
}

// Add All: selects every row. Unmarking each from the last index down to 0, the list sorting itself after
// each, ends with this order and with row 0 highlighted.
void importRDSSpy::Command1_Click()
{
    setLines(allUnmarked(lines()));
    ui->List1->setListIndex(0);
}

// Remove All: deselects every row. Marking each from index 0 up to the last, the list sorting itself after
// each, ends with this order and with the last row highlighted.
void importRDSSpy::Command2_Click()
{
    setLines(allMarked(lines()));
    ui->List1->setListIndex(ui->List1->count() - 1);
}

// Cancel: closes the window, or stops an import.
void importRDSSpy::Command4_Click()
{
    close();
}

// Add Selected: selects the highlighted row.
void importRDSSpy::Command5_Click()
{
    unmarkRow(ui->List1->listIndex());
}

// Remove Selected: deselects the highlighted row.
void importRDSSpy::Command6_Click()
{
    markRow(ui->List1->listIndex());
}

void importRDSSpy::markRow(int row)
{
    replaceRow(row, marked(ui->List1->text(row)));
}

void importRDSSpy::unmarkRow(int row)
{
    replaceRow(row, unmarked(ui->List1->text(row)));
}

// The new text goes to its place in the order; the row number stays the highlighted one.
void importRDSSpy::replaceRow(int row, const QString &line)
{
    QStringList all = lines();
    all.removeAt(row);
    all.insert(std::ranges::upper_bound(all, line), line);
    const int top = ui->List1->verticalScrollBar()->value();
    setLines(all);
    ui->List1->verticalScrollBar()->setValue(top);
    ui->List1->setListIndex(row);
}

QStringList importRDSSpy::lines() const
{
    QStringList all;
    all.reserve(ui->List1->count());
    for (int row = 0; row < ui->List1->count(); ++row) {
        all += ui->List1->text(row);
    }
    return all;
}

int importRDSSpy::selectedCount() const
{
    const QStringList all = lines();
    return static_cast<int>(all.size() - std::ranges::count_if(all, isMarked));
}

void importRDSSpy::setLines(const QStringList &lines)
{
    ui->List1->setLines(lines);
    List1_Click();
    showCounts();
}

void importRDSSpy::showCounts()
{
    ui->Label4->setText(m_day.isEmpty() ? u"Rece&ptions"_s
                                        : u"Rece&ptions of %1: %2, selected %3"_s.arg(m_day)
                                              .arg(ui->List1->count())
                                              .arg(selectedCount()));
}

void importRDSSpy::showFolder(const QString &folder)
{
    const QString missing = missingFolderText(folder, u"RDS Spy"_s);
    ui->folder->setText(missing.isEmpty() ? QString(u"Folder: "_s + folder) : missing);
    ui->folder->setToolTip(plainTip(folder));
    if (!missing.isEmpty()) {
        ui->List1->setEmptyText(missing);
    } else if (m_day.isEmpty()) {
        ui->List1->setEmptyText(u"No day chosen. Close this window and open it again to enter a date."_s);
    } else {
        ui->List1->setEmptyText(
            u"No receptions of %1 in %2. Another folder is set in the menu Setup, under Directories."_s.arg(
                m_day, folder));
    }
}

} // namespace quillon
