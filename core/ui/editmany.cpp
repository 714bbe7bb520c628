#include "core/ui/editmany.h"

#include "core/propagation.h"
#include "ui/calmcombos.h"
#include "ui/guard.h"
#include "ui/onelinefields.h"
#include "ui/problemwatch.h"
#include "ui_editmany.h"

#include <QTextDocument>

#include <algorithm>
#include <set>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString textOf(const QWidget &value)
{
    if (const auto *line = qobject_cast<const QLineEdit *>(&value)) {
        return line->text();
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(&value)) {
        return combo->currentText();
    }
    // As it was typed: a plain text has its no-break spaces replaced.
    return static_cast<const QPlainTextEdit &>(value).document()->toRawText();
}

} // namespace

EditMany::EditMany(const Logbook &log, std::vector<qint32> entries, const QStringList &countries,
    const CodePage &codePage, QWidget *parent)
    : QDialog(parent)
    , m_log(log)
    , m_entries(std::move(entries))
    , m_ui(std::make_unique<Ui::EditMany>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    tellTitle();
    keepFieldsOnOneLine(*this);
    keepCombosCalm(*this);
    for (const QStringView mode : propagationModes) {
        m_ui->valueProp->addItem(mode.toString());
    }
    m_ui->valueCountry->addItems(countries);
    for (QComboBox *combo : {m_ui->valueProp, m_ui->valueCountry}) {
        // What is typed stays as it is typed.
        combo->setCompleter(nullptr);
        combo->setCurrentIndex(-1);
    }
    m_rows = {{{LogField::PiCode, m_ui->tickPiCode, m_ui->valuePiCode, {}},
        {LogField::Freq, m_ui->tickFreq, m_ui->valueFreq, {}},
        {LogField::RdsName, m_ui->tickRdsName, m_ui->valueRdsName, {}},
        {LogField::Country, m_ui->tickCountry, m_ui->valueCountry, {}},
        {LogField::Transmitter, m_ui->tickTransmitter, m_ui->valueTransmitter, {}},
        {LogField::Power, m_ui->tickPower, m_ui->valuePower, {}},
        {LogField::Notes, m_ui->tickNotes, m_ui->valueNotes, {}},
        {LogField::Prop, m_ui->tickProp, m_ui->valueProp, {}},
        {LogField::Uid, m_ui->tickUid, m_ui->valueUid, {}}}};
    watch(codePage);
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        wire(index);
    }
    connect(
        m_ui->OKButton, &QPushButton::clicked, this, [this] { guarded(this, [this] { OKButton_Click(); }); });
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &EditMany::close);
    tellEffect();
}

EditMany::~EditMany() = default;

void EditMany::tellTitle()
{
    setWindowTitle(u"Edit "_s + receptionCount(static_cast<qsizetype>(m_entries.size())));
}

void EditMany::watch(const CodePage &codePage)
{
    watchForProblems(*m_ui->problem, codePage,
        {{m_ui->valueFreq, FieldKind::Freq}, {m_ui->valuePiCode, FieldKind::PiCode},
            {m_ui->valueRdsName, FieldKind::RdsName}, {m_ui->valueCountry, FieldKind::PlainText},
            {m_ui->valueTransmitter, FieldKind::PlainText}, {m_ui->valuePower, FieldKind::PlainText},
            {m_ui->valueNotes, FieldKind::Notes}, {m_ui->valueProp, FieldKind::PlainText},
            {m_ui->valueUid, FieldKind::PlainText}});
}

void EditMany::wire(std::size_t index)
{
    const auto changed = [this, index] {
        update(m_rows[index]);
        tellEffect();
    };
    const Row &row = m_rows[index];
    QList<QWidget *> values {row.value};
    if (row.field == LogField::Notes) {
        values += m_ui->notesMode;
    }
    for (QWidget *value : std::as_const(values)) {
        value->setEnabled(false);
        connect(row.tick, &QCheckBox::toggled, value, &QWidget::setEnabled);
        if (auto *combo = qobject_cast<QComboBox *>(value)) {
            connect(combo, &QComboBox::currentTextChanged, this, changed);
        }
    }
    connect(row.tick, &QCheckBox::toggled, this, changed);
    if (auto *line = qobject_cast<QLineEdit *>(row.value)) {
        connect(line, &QLineEdit::textChanged, this, changed);
    } else if (auto *lines = qobject_cast<QPlainTextEdit *>(row.value)) {
        connect(lines, &QPlainTextEdit::textChanged, this, changed);
    }
}

void EditMany::tellAlso(Consequence consequence)
{
    m_consequence = std::move(consequence);
    tellEffect();
}

void EditMany::logChanged()
{
    // A number that is given again is another reception.
    std::erase_if(m_entries, [this](qint32 number) { return number >= m_log.count(); });
    if (m_entries.empty()) {
        close();
        return;
    }
    tellTitle();
    std::ranges::for_each(m_rows, [this](Row &row) { update(row); });
    tellEffect();
}

// Nothing while the field is not ticked.
std::optional<NewValue> EditMany::newValue(const Row &row) const
{
    if (!row.tick->isChecked()) {
        return std::nullopt;
    }
    const bool appended = row.field == LogField::Notes && m_ui->notesMode->currentIndex() > 0;
    return NewValue {row.field, textOf(*row.value), appended};
}

void EditMany::update(Row &row)
{
    const auto value = newValue(row);
    row.effect = value ? effectOfMany(editMany(m_log, m_entries, {&*value, 1}), *value) : QString();
}

void EditMany::tellEffect()
{
    QStringList effects;
    for (const Row &row : m_rows) {
        if (!row.effect.isEmpty()) {
            effects += row.effect;
        }
    }
    const bool ticked = std::ranges::any_of(m_rows, [](const Row &row) { return row.tick->isChecked(); });
    m_ui->OKButton->setEnabled(!effects.isEmpty());
    if (!effects.isEmpty()) {
        if (const QString more = m_consequence ? m_consequence(change()) : QString(); !more.isEmpty()) {
            effects += more;
        }
        m_ui->effect->setText(effects.join(u'\n'));
    } else {
        m_ui->effect->setText(
            ticked ? u"Nothing would change: it is so already."_s : u"Tick the fields that are to change."_s);
    }
}

// What is ticked, of the entries as they are now.
LogChange EditMany::change() const
{
    std::vector<NewValue> values;
    for (const Row &row : m_rows) {
        if (auto value = newValue(row)) {
            values.push_back(std::move(*value));
        }
    }
    return editMany(m_log, m_entries, values);
}

// OK: hands the change over.
void EditMany::OKButton_Click()
{
    const LogChange change = this->change();
    if (change.isEmpty()) {
        logChanged();
        return;
    }
    std::set<qint32> changed;
    for (const FieldChange &field : change.fields) {
        changed.insert(field.entry);
    }
    // The window closes: a second click that is under way changes nothing.
    m_ui->OKButton->setEnabled(false);
    Q_EMIT editChosen(change, u"Edit "_s + receptionCount(static_cast<qsizetype>(changed.size())));
    close();
}

} // namespace quillon
