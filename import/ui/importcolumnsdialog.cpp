#include "import/ui/importcolumnsdialog.h"

#include "ui/calmcombos.h"
#include "ui/problemlabel.h"
#include "ui/tablelook.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

ImportColumnsDialog::ImportColumnsDialog(
    const std::vector<ImportColumn> &columns, const std::vector<QString> &examples, QWidget *parent)
    : QDialog(parent)
    , m_columns(columns)
    , m_problem(new ProblemLabel(this))
    , m_ok(nullptr)
{
    setObjectName(u"importColumns"_s);
    setWindowTitle(u"Columns of the File"_s);
    auto *layout = new QVBoxLayout(this);
    auto *label = new QLabel(u"&Which column is what"_s, this);
    auto *table = new QTableWidget(static_cast<int>(columns.size()), 3, this);
    table->setObjectName(u"columns"_s);
    table->setAccessibleName(u"Columns"_s);
    label->setBuddy(table);
    setTableLook(*table);
    table->verticalHeader()->setDefaultSectionSize(
        qMax(table->verticalHeader()->defaultSectionSize(), QComboBox().sizeHint().height()));
    table->setHorizontalHeaderLabels({u"Column"_s, u"First Value"_s, u"Becomes"_s});
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int row = static_cast<int>(i);
        const QString name = columns[i].name.simplified();
        table->setItem(row, 0, new QTableWidgetItem(name));
        table->setItem(row, 1, new QTableWidgetItem(i < examples.size() ? examples[i] : QString()));
        auto *combo = new QComboBox(table);
        combo->setObjectName(u"use%1"_s.arg(i + 1));
        combo->setAccessibleName(u"What the column %1 becomes"_s.arg(name));
        for (const ColumnUse use : columnUses) {
            combo->addItem(columnUseCaption(use));
        }
        combo->setCurrentIndex(
            static_cast<int>(std::ranges::find(columnUses, columns[i].use) - columnUses.begin()));
        connect(combo, &QComboBox::currentIndexChanged, this, [this] { tellMissing(); });
        table->setCellWidget(row, 2, combo);
        m_combos.push_back(combo);
    }
    constexpr int nameWidth = 150;
    constexpr int exampleWidth = 180;
    table->setColumnWidth(0, nameWidth);
    table->setColumnWidth(1, exampleWidth);
    table->horizontalHeader()->setStretchLastSection(true);
    m_problem->setObjectName(u"problem"_s);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_ok->setText(u"&OK"_s);
    buttons->button(QDialogButtonBox::Cancel)->setText(u"&Cancel"_s);
    layout->addWidget(label);
    layout->addWidget(table);
    layout->addWidget(m_problem);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    keepCombosCalm(*this);
    constexpr QSize usual(620, 420);
    resize(usual);
    tellMissing();
}

std::vector<ColumnUse> ImportColumnsDialog::uses() const
{
    std::vector<ColumnUse> uses;
    for (const QComboBox *combo : m_combos) {
        uses.push_back(columnUses[static_cast<std::size_t>(combo->currentIndex())]);
    }
    return uses;
}

void ImportColumnsDialog::tellMissing()
{
    const std::vector<ColumnUse> chosen = uses();
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        m_columns[i].use = chosen[i];
    }
    const QString missing = missingColumns(m_columns);
    m_problem->tell(missing);
    m_ok->setEnabled(missing.isEmpty());
}

} // namespace quillon
