#include "core/ui/entryform.h"

#include "core/linebreaks.h"
#include "core/propagation.h"
#include "core/typedfields.h"
#include "fmlist/search.h"
#include "txdb/countrynames.h"
#include "txdb/siteleg.h"
#include "ui/calmcombos.h"
#include "ui/looks.h"
#include "ui/onelinefields.h"
#include "ui/ownroom.h"
#include "ui/problemwatch.h"
#include "ui_entryform.h"

#include <QToolButton>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// A line of the files is one entry, whatever a field was filled with.
QString fieldText(const QString &text)
{
    return withoutLineBreaks(text);
}

} // namespace

EntryForm::EntryForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::EntryForm>())
{
    m_ui->setupUi(this);
    keepFieldsOnOneLine(*this);
    keepRoomForCapitals(*m_ui->Text8, 8);
    keepRoomForCapitals(*m_ui->Text5, 8);
    keepCombosCalm(*this, [this] { return m_state == State::AtRest; });
    for (QComboBox *combo : {m_ui->Combo2, m_ui->Combo3}) {
        // What is typed stays as it is typed.
        combo->setCompleter(nullptr);
    }
    m_ui->formSplitter->setSizes({360, 330});
    for (QWidget *told : {static_cast<QWidget *>(m_ui->newBadge), static_cast<QWidget *>(m_ui->legLabel)}) {
        new OwnRoom(*told);
    }
    m_ui->legLabel->link().setObjectName(u"legLink"_s);
    setTabOrder(m_ui->Text10, &m_ui->legLabel->link());
    setTabOrder(&m_ui->legLabel->link(), m_ui->Command10);
    for (QLabel *label : {m_ui->freqStored, m_ui->chosenCount}) {
        // One line with the problems, which stands still.
        label->setFont(m_ui->problem->font());
    }
    setChosenCount(0);
}

EntryForm::~EntryForm() = default;

void EntryForm::prepare(const Regional &regional, const TransmitterList &sites)
{
    m_regional = regional;
    m_sites = &sites;
    wire();
    watchEdits();
    for (const QLineEdit *field : {m_ui->Text7, m_ui->Text10}) {
        connect(field, &QLineEdit::textChanged, this, [this] { showLeg(); });
    }
    watchForProblems(*m_ui->problem, regional.codePage,
        {{m_ui->Text9, FieldKind::Freq}, {m_ui->Text1, FieldKind::PiCode}, {m_ui->Text8, FieldKind::RdsName},
            {m_ui->Text2, FieldKind::PlainText}, {m_ui->Combo2, FieldKind::PlainText},
            {m_ui->Text3, FieldKind::Notes}, {m_ui->uid, FieldKind::PlainText},
            {m_ui->Combo3, FieldKind::PlainText}, {m_ui->Text5, FieldKind::PlainText},
            {m_ui->Text6, FieldKind::PlainText}, {m_ui->Text7, FieldKind::Latitude},
            {m_ui->Text10, FieldKind::Longitude}});
    setState(State::AtRest);
}

void EntryForm::measureFrom(const Settings &settings)
{
    m_settings = settings;
    showLeg();
}

// The way from home to the site, or for a locator in the box of the latitude a link that takes its middle.
void EntryForm::showLeg()
{
    const QString text = m_ui->Text7->text();
    const auto middle = locatorMiddle(text);
    if (!middle || m_state == State::AtRest) {
        m_ui->legLabel->setText(siteLegText(text, m_ui->Text10->text(), m_settings));
        return;
    }
    m_ui->legLabel->tell(text.trimmed().left(6).toUpper(), u"Use Its Middle"_s, [this, middle] {
        setPosition(middle->latitude, middle->longitude);
        m_ui->Text10->setFocus(Qt::OtherFocusReason);
        Q_EMIT edited();
    });
}

void EntryForm::listModes()
{
    for (const QStringView mode : propagationModes) {
        m_ui->Combo2->addItem(mode.toString());
    }
    m_ui->Combo2->setCurrentIndex(-1);
}

void EntryForm::setCountries(const QStringList &countries)
{
    m_ui->Combo3->clear();
    m_ui->Combo3->addItems(countries);
    for (int i = 0; i < m_ui->Combo3->count(); ++i) {
        m_ui->Combo3->setItemData(i, countryName(m_ui->Combo3->itemText(i)), Qt::ToolTipRole);
    }
    m_ui->Combo3->setCurrentIndex(-1);
}

QStringList EntryForm::countries() const
{
    QStringList countries;
    for (int i = 0; i < m_ui->Combo3->count(); ++i) {
        countries += m_ui->Combo3->itemText(i);
    }
    return countries;
}

void EntryForm::addPane(QWidget &pane, const QList<QWidget *> &stops)
{
    m_ui->formSplitter->addWidget(&pane);
    m_ui->formSplitter->setSizes({360, 330, 420});
    QWidget *before = m_ui->Command8;
    for (QWidget *stop : stops) {
        setTabOrder(before, stop);
        before = stop;
    }
    setTabOrder(before, m_ui->Command2);
}

QString EntryForm::frequency() const
{
    return m_ui->Text9->text();
}

QString EntryForm::piCode() const
{
    return m_ui->Text1->text();
}

QString EntryForm::rdsName() const
{
    return m_ui->Text8->text();
}

QString EntryForm::country() const
{
    return m_ui->Combo3->currentText();
}

QString EntryForm::site() const
{
    return m_ui->Text5->text();
}

QString EntryForm::mode() const
{
    return m_ui->Combo2->currentText();
}

QString EntryForm::dateTimeText() const
{
    return m_ui->Text2->text();
}

std::optional<DateTime> EntryForm::dateTime() const
{
    return parseDateTime(m_ui->Text2->text(), m_regional.months);
}

LogEntry EntryForm::entry() const
{
    LogEntry entry;
    entry.piCode = fieldText(m_ui->Text1->text());
    entry.dateTime = toDateTime(m_ui->Text2->text(), m_regional.months, u"The field Date / Time"_s);
    entry.prop = fieldText(m_ui->Combo2->currentText());
    entry.freq = fieldText(m_ui->Text9->text());
    entry.transmitter = fieldText(m_ui->Text5->text());
    entry.country = fieldText(m_ui->Combo3->currentText());
    entry.notes = notes();
    entry.rdsName = fieldText(m_ui->Text8->text());
    entry.power = fieldText(m_ui->Text6->text());
    entry.uid = fieldText(m_ui->uid->text());
    return entry;
}

LogEntry EntryForm::entryOver(const LogEntry &stored) const
{
    LogEntry changed = entry();
    changed.dist = stored.dist;
    changed.fmlist = stored.fmlist;
    if (!m_ui->Text3->document()->isModified()) {
        // The text box knows one kind of line end and of blank: notes that nobody touched keep theirs.
        changed.notes = stored.notes;
    }
    return changed;
}

Transmitter EntryForm::transmitter() const
{
    return {fieldText(m_ui->Text5->text()).trimmed(), fieldText(m_ui->Combo3->currentText()).trimmed(),
        fieldText(m_ui->Text7->text()), fieldText(m_ui->Text10->text()), {}};
}

void EntryForm::show(const LogEntry &entry)
{
    m_ui->Text1->setText(entry.piCode);
    m_ui->Text2->setText(generalText(entry.dateTime));
    m_ui->Text8->setText(entry.rdsName);
    m_ui->Text5->setText(entry.transmitter);
    m_ui->Combo3->setEditText(entry.country);
    showNotes(entry.notes);
    m_ui->Text9->setText(entry.freq);
    m_ui->Combo2->setEditText(entry.prop);
    m_ui->Text6->setText(entry.power);
    m_ui->uid->setText(entry.uid);
    listSites(entry.country);
    if (!entry.transmitter.isEmpty() && !entry.country.isEmpty()) {
        showSite(entry.transmitter, entry.country);
    }
    settle();
}

void EntryForm::clearForNew(DateTime now)
{
    m_ui->Text2->setText(generalText(now));
    for (QLineEdit *field :
        {m_ui->Text1, m_ui->Text6, m_ui->Text7, m_ui->Text10, m_ui->Text8, m_ui->Text5, m_ui->uid}) {
        field->clear();
    }
    showNotes({});
    settle();
}

void EntryForm::clear()
{
    for (QLineEdit *field : {m_ui->Text1, m_ui->Text2, m_ui->Text6, m_ui->Text7, m_ui->Text10, m_ui->Text8,
             m_ui->Text5, m_ui->Text9, m_ui->uid}) {
        field->clear();
    }
    m_ui->Combo2->setEditText({});
    m_ui->Combo3->setEditText({});
    showNotes({});
    settle();
}

void EntryForm::clearPosition()
{
    m_ui->Text7->clear();
    m_ui->Text10->clear();
}

void EntryForm::setDateTime(const QString &text)
{
    m_ui->Text2->setText(text);
}

void EntryForm::setFrequency(const QString &text)
{
    m_ui->Text9->setText(text);
}

void EntryForm::setPiCode(const QString &text)
{
    m_ui->Text1->setText(text);
}

void EntryForm::setRdsName(const QString &text)
{
    m_ui->Text8->setText(text);
}

void EntryForm::setCountry(const QString &text)
{
    m_ui->Combo3->setEditText(text);
}

void EntryForm::setPosition(const QString &latitude, const QString &longitude)
{
    m_ui->Text7->setText(latitude);
    m_ui->Text10->setText(longitude);
    m_edited = true;
}

void EntryForm::clearUid()
{
    m_ui->uid->clear();
}

void EntryForm::clearSiteAndNotes()
{
    for (QLineEdit *field : {m_ui->Text5, m_ui->Text6, m_ui->Text7, m_ui->Text10, m_ui->uid}) {
        field->clear();
    }
    showNotes({});
}

void EntryForm::takeOver(const SearchResult &result)
{
    m_ui->Text9->setText(result.frequency);
    m_ui->Text1->setText(result.pi);
    m_ui->Text8->setText(result.ps);
    m_ui->Combo3->setEditText(result.country);
    m_ui->Text5->setText(result.transmitter);
    m_ui->Text6->setText(result.power);
    setPosition(result.latitude, result.longitude);
    m_ui->uid->setText(result.uid);
}

void EntryForm::showNotes(const QString &notes)
{
    const QTextDocument &document = *m_ui->Text3->document();
    // To make the document anew takes longer than all other fields together.
    if (!notes.isEmpty() || !document.isEmpty() || document.isModified() || document.isUndoAvailable()
        || document.isRedoAvailable()) {
        m_ui->Text3->setPlainText(notes);
    }
    m_shownNotes = notes;
}

// Notes that nobody touched are as they were; the text box knows one kind of line end.
QString EntryForm::notes() const
{
    const QTextDocument &document = *m_ui->Text3->document();
    return document.isModified() ? withLineEnds(document.toRawText()) : m_shownNotes;
}

void EntryForm::listSites(const QString &country)
{
    m_ui->Combo1->clear();
    m_ui->Combo1->addItems(m_sites->namesOfCountry(country));
    m_ui->Combo1->setCurrentIndex(-1);
}

void EntryForm::showSite(const QString &name, const QString &country)
{
    if (const auto found = m_sites->find(name, country)) {
        const Transmitter &site = m_sites->row(*found);
        m_ui->Text5->setText(site.name);
        m_ui->Text7->setText(site.latitude);
        m_ui->Text10->setText(site.longitude);
    }
}

} // namespace quillon
