#include "stations/ui/stationcolumns.h"

#include "platform/strangerstext.h"
#include "stations/csvrecords.h"
#include "ui/tablelook.h"
#include "ui_stationcolumns.h"

#include <QBuffer>
#include <QHeaderView>
#include <QPushButton>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t shownRecords = 12;
constexpr qsizetype shownColumns = 40;
constexpr qsizetype longestCell = 60;

struct Choice
{
    QString caption;
    QString value;
};

QList<Choice> encodings(const CodePage &codePage)
{
    QList<Choice> list {{u"UTF-8"_s, u"UTF-8"_s}, {u"UTF-16"_s, u"UTF-16"_s}};
    for (const int page : {codePage.number(), 1250, 1251, 1252, 1253, 1254, 1257}) {
        const QString number = QString::number(page);
        if (std::ranges::none_of(list, [&](const Choice &one) { return one.value == number; })) {
            list += {u"Windows-"_s + number, number};
        }
    }
    return list;
}

const QList<Choice> separators {
    {u"Semicolon ;"_s, u";"_s}, {u"Comma ,"_s, u","_s}, {u"Tab"_s, u"\t"_s}, {u"Bar |"_s, u"|"_s}};

void fill(QComboBox &box, const QList<Choice> &choices, const QString &chosen)
{
    for (const Choice &choice : choices) {
        box.addItem(choice.caption, choice.value);
    }
    box.setCurrentIndex(std::max(box.findData(chosen), 0));
}

} // namespace

StationColumns::StationColumns(
    const QByteArray &beginning, const QString &fileName, const CodePage &codePage, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::StationColumns>())
    , m_beginning(beginning)
{
    m_ui->setupUi(this);
    setWindowTitle(u"Station List: "_s + fileName);
    setTableLook(*m_ui->beginning);
    m_layout.encoding = guessedEncoding(beginning, codePage);
    m_layout.separator = guessedSeparator(TextDecoder(m_layout.encoding).decode(beginning));
    fill(*m_ui->encoding, encodings(codePage), m_layout.encoding);
    fill(*m_ui->separator, separators, m_layout.separator);
    connect(m_ui->encoding, &QComboBox::currentIndexChanged, this, &StationColumns::readBeginning);
    connect(m_ui->separator, &QComboBox::currentIndexChanged, this, &StationColumns::readBeginning);
    connect(
        m_ui->hasHeading, &QCheckBox::toggled, this, [this](bool heading) { m_layout.hasHeading = heading; });
    connect(m_ui->OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    readBeginning();
}

StationColumns::~StationColumns() = default;

// Encoding or separator are others: the columns are guessed anew.
void StationColumns::readBeginning()
{
    m_layout.encoding = m_ui->encoding->currentData().toString();
    m_layout.separator = m_ui->separator->currentData().toString().at(0);
    m_records.clear();
    QBuffer buffer(&m_beginning);
    buffer.open(QIODevice::ReadOnly);
    BlockSource source(buffer, {}, {});
    CsvRecords records(source, m_layout.encoding, m_layout.separator);
    for (auto record = records.next(); record && m_records.size() < shownRecords; record = records.next()) {
        m_records.push_back(record->fields.mid(0, shownColumns));
    }
    m_layout.columns = columnsOf(m_records.empty() ? QStringList() : m_records.front());
    m_layout.hasHeading = std::ranges::any_of(m_layout.columns, [](int column) { return column >= 0; });
    m_ui->hasHeading->setChecked(m_layout.hasHeading);
    showColumns();
}

void StationColumns::showColumns()
{
    QTableWidget &table = *m_ui->beginning;
    table.clear();
    m_choices.clear();
    qsizetype columns = 0;
    for (const QStringList &record : m_records) {
        columns = std::max(columns, record.size());
    }
    table.setColumnCount(static_cast<int>(columns));
    table.setRowCount(static_cast<int>(m_records.size()) + 1);
    for (int column = 0; column < table.columnCount(); ++column) {
        auto *choice = new QComboBox;
        choice->setAccessibleName(u"What column %1 holds"_s.arg(column + 1));
        choice->addItem(u"(not read)"_s);
        for (const StationColumn &field : stationColumns()) {
            choice->addItem(field.caption.toString());
        }
        const auto *found = std::ranges::find(m_layout.columns, column);
        choice->setCurrentIndex(
            found == m_layout.columns.end() ? 0 : static_cast<int>(found - m_layout.columns.begin()) + 1);
        connect(choice, &QComboBox::currentIndexChanged, this,
            [this, column](int chosen) { chooseColumn(column, chosen); });
        table.setCellWidget(0, column, choice);
        m_choices.push_back(choice);
    }
    for (std::size_t row = 0; row < m_records.size(); ++row) {
        for (int column = 0; column < m_records[row].size(); ++column) {
            auto *cell = new QTableWidgetItem(strangersText(m_records[row].at(column), longestCell));
            cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            table.setItem(static_cast<int>(row) + 1, column, cell);
        }
    }
    if (!m_choices.empty()) {
        table.setRowHeight(0, m_choices.front()->sizeHint().height());
    }
    table.resizeColumnsToContents();
    tellMissing();
}

// A field is in one column at most.
void StationColumns::chooseColumn(int column, int choice)
{
    for (int &of : m_layout.columns) {
        of = of == column ? -1 : of;
    }
    if (choice > 0) {
        int &of = m_layout.columns.at(static_cast<std::size_t>(choice - 1));
        if (of >= 0) {
            const QSignalBlocker quiet(m_choices.at(static_cast<std::size_t>(of)));
            m_choices.at(static_cast<std::size_t>(of))->setCurrentIndex(0);
        }
        of = column;
    }
    tellMissing();
}

void StationColumns::tellMissing()
{
    const QStringList missing = missingColumns(m_layout);
    m_ui->missing->setText(
        missing.isEmpty() ? QString() : u"Say which column holds: "_s + missing.join(u", "_s));
    m_ui->OKButton->setEnabled(missing.isEmpty());
}

} // namespace quillon
