#include "import/ui/importcolumnsdialog.h"
#include "import/ui/importfile.h"
#include "ui/guard.h"

#include "ui_importfile.h"

#include <QSignalBlocker>

#include <algorithm>
#include <numeric>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The place of what all files have in a list of choices; -1 where they differ.
template<typename Choices, typename Value>
int commonPlace(const Choices &choices, std::span<const ImportReading> readings,
    const std::vector<std::size_t> &files, const Value &value)
{
    int place = -1;
    for (const std::size_t file : files) {
        const auto found = std::ranges::find(choices, value(readings[file].format)) - choices.begin();
        if (place >= 0 && place != found) {
            return -1;
        }
        place = static_cast<int>(found);
    }
    return place;
}

constexpr std::array decimalCommas {false, true};
constexpr std::array localTimes {false, true};
constexpr std::array dateOrders {DateOrder::DayFirst, DateOrder::MonthFirst};

} // namespace

void importFile::offerFormats()
{
    for (const TextEncoding encoding : textEncodings) {
        ui->importEncoding->addItem(encodingName(encoding));
    }
    ui->importSeparator->addItems({u"Semicolon ;"_s, u"Comma ,"_s, u"Tab"_s, u"Bar |"_s});
    ui->importDecimal->addItems({u"Point 98.5"_s, u"Comma 98,5"_s});
    ui->importDates->addItems({u"Day first 21/11/2025"_s, u"Month first 11/21/2025"_s});
    ui->importTimes->addItems({u"UTC"_s, u"Local time"_s});
    const QByteArray zone = m_session.zone().id();
    for (const QByteArray &id : QTimeZone::availableTimeZoneIds()) {
        ui->importZone->addItem(QString::fromLatin1(id));
    }
    if (ui->importZone->findText(QString::fromLatin1(zone)) < 0) {
        ui->importZone->insertItem(0, QString::fromLatin1(zone));
    }
    ui->importZone->setCurrentText(QString::fromLatin1(zone));
    ui->importMinutes->setRange(0, mostImportMinutes);
    ui->importMinutes->setValue(m_session.minutes());
}

void importFile::wireFormats()
{
    const auto on = [this](QComboBox *combo, const auto &set) {
        connect(combo, &QComboBox::activated, this,
            [this, set](int place) { guarded(this, [&] { set(static_cast<std::size_t>(place)); }); });
    };
    on(ui->importFileShown, [this](std::size_t) { showFormats(); });
    on(ui->importEncoding, [this](std::size_t place) {
        setForShown([place](FormatChoice &choice) { choice.encoding = textEncodings[place]; });
    });
    on(ui->importSeparator, [this](std::size_t place) {
        setForShown([place](FormatChoice &choice) { choice.separator = importSeparators[place]; });
    });
    on(ui->importDecimal, [this](std::size_t place) {
        setForShown([place](FormatChoice &choice) { choice.decimalComma = decimalCommas[place]; });
    });
    on(ui->importDates, [this](std::size_t place) {
        setForShown([place](FormatChoice &choice) { choice.dates = dateOrders[place]; });
    });
    on(ui->importTimes, [this](std::size_t place) {
        setForShown([place](FormatChoice &choice) { choice.localTime = localTimes[place]; });
        keepHeadings();
    });
    on(ui->importZone, [this](std::size_t) {
        const QTimeZone zone(ui->importZone->currentText().toLatin1());
        m_session.setZone(zone);
        m_memory.keepZone(zone);
        readAgain();
    });
    connect(ui->importMinutes, &QSpinBox::valueChanged, this, [this](int minutes) {
        guarded(this, [&] {
            m_session.setMinutes(minutes);
            m_memory.keepMinutes(minutes);
            showSession();
        });
    });
}

// The files of which the controls tell: the chosen one, or all.
std::vector<std::size_t> importFile::shownFiles() const
{
    const std::size_t count = m_session.sources().size();
    const int place = ui->importFileShown->currentIndex();
    if (place > 0) {
        return {static_cast<std::size_t>(place) - 1};
    }
    std::vector<std::size_t> files(count);
    std::iota(files.begin(), files.end(), std::size_t(0));
    return files;
}

void importFile::showFormats()
{
    const auto readings = m_session.readings();
    const std::vector<std::size_t> files = shownFiles();
    const auto at = [&](const auto &choices, const auto &value) {
        return commonPlace(choices, readings, files, value);
    };
    ui->importEncoding->setCurrentIndex(at(textEncodings, [](const ImportFormat &f) { return f.encoding; }));
    ui->importSeparator->setCurrentIndex(
        at(importSeparators, [](const ImportFormat &f) { return f.separator; }));
    ui->importDecimal->setCurrentIndex(
        at(decimalCommas, [](const ImportFormat &f) { return f.decimalComma; }));
    ui->importDates->setCurrentIndex(at(dateOrders, [](const ImportFormat &f) { return f.dates; }));
    ui->importTimes->setCurrentIndex(at(localTimes, [](const ImportFormat &f) { return f.localTime; }));
    QStringList kinds;
    for (const std::size_t file : files) {
        const ImportReading &reading = readings[file];
        const QString kind = reading.refusal.isEmpty() || !reading.rows.empty()
            ? importKindCaption(reading.format.kind)
            : u"Not read"_s;
        if (!kinds.contains(kind)) {
            kinds += kind;
        }
    }
    ui->importKind->setText(kinds.size() > 1 ? u"Several kinds"_s : kinds.join(QString()));
    ui->importKind->setToolTip(kinds.join(u", "_s));
    ui->formats->setEnabled(!files.empty());
    ui->importZone->setCurrentText(QString::fromLatin1(m_session.zone().id()));
    ui->importZone->setEnabled(
        std::ranges::any_of(readings, [](const ImportReading &reading) { return reading.format.localTime; }));
    ui->importColumnsButton->setEnabled(
        std::ranges::any_of(files, [&](std::size_t file) { return !readings[file].format.columns.empty(); }));
}

void importFile::setForShown(const std::function<void(FormatChoice &)> &set)
{
    for (const std::size_t file : shownFiles()) {
        set(m_session.choice(file));
    }
    readAgain();
}

// Columns: which is what. Asked of the first file that waits for it, else of the first that has columns; kept
// for all files with the same heading.
void importFile::askColumns()
{
    const auto readings = m_session.readings();
    const std::vector<std::size_t> files = shownFiles();
    auto asked = std::ranges::find_if(files, [&](std::size_t file) { return readings[file].format.guessed; });
    if (asked == files.end()) {
        asked = std::ranges::find_if(
            files, [&](std::size_t file) { return !readings[file].format.columns.empty(); });
    }
    if (asked == files.end()) {
        return;
    }
    const ImportReading &reading = readings[*asked];
    ImportColumnsDialog dialog(reading.format.columns, reading.examples, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const QStringList heading = reading.heading;
    for (std::size_t file = 0; file < readings.size(); ++file) {
        if (readings[file].heading == heading) {
            m_session.choice(file).columns = dialog.uses();
        }
    }
    readAgain();
    keepHeadings();
}

// What the listener said of headings that nobody else knows.
void importFile::keepHeadings()
{
    for (const ImportReading &reading : m_session.readings()) {
        if (reading.format.kind != ImportKind::Columns || reading.format.guessed
            || reading.format.headingLine == 0 || reading.format.columns.empty()) {
            continue;
        }
        FormatChoice said;
        said.localTime = reading.format.localTime;
        said.columns.emplace();
        for (const ImportColumn &column : reading.format.columns) {
            said.columns->push_back(column.use);
        }
        m_memory.keepHeading(reading.heading, said);
    }
}

} // namespace quillon
