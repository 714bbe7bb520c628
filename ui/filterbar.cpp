#include "ui/filterbar.h"

#include "core/filterreader.h"
#include "ui/calmcombos.h"
#include "ui/filtertip.h"
#include "ui/messages.h"
#include "ui/problemlabel.h"
#include "ui_filterbar.h"

#include <QKeyEvent>
#include <QLocale>
#include <QMenu>

#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct State
{
    QStringView name;
    FMListState state;
};

constexpr std::array<State, 5> states {{
    {u"No UID", FMListState::NoUid},
    {u"Not sent", FMListState::NotSent},
    {u"Sent", FMListState::Sent},
    {u"None", FMListState::None},
    {u"Multi", FMListState::Multi},
}};

// The text that is chosen; nothing for "All", which comes first.
std::optional<QString> chosen(const QComboBox &combo)
{
    return combo.currentIndex() <= 0 ? std::nullopt : std::optional(combo.currentText());
}

int placeOf(const QComboBox &combo, const QString &text)
{
    for (int i = 1; i < combo.count(); ++i) {
        if (combo.itemText(i) == text) {
            return i;
        }
    }
    return -1;
}

// Chooses a text, "All" for an empty one.
void choose(QComboBox &combo, const QString &text)
{
    if (!text.isEmpty() && placeOf(combo, text) < 0) {
        combo.addItem(text);
    }
    combo.setCurrentIndex(text.isEmpty() ? 0 : placeOf(combo, text));
}

void fill(QComboBox &combo, const QStringList &texts)
{
    const QSignalBlocker nothingIsChosen(combo);
    const QString text = chosen(combo).value_or(QString());
    while (combo.count() > 1) {
        combo.removeItem(combo.count() - 1);
    }
    combo.addItems(texts);
    choose(combo, text);
}

// Colours that are seen at once, with a text that is readable on them.
QPalette marked(QPalette palette)
{
    const bool isDark = qGray(palette.color(QPalette::Window).rgb()) < 128;
    const QColor ground(isDark ? 0xff14507eU : 0xffbfe0ffU);
    const QColor text(isDark ? Qt::white : Qt::black);
    for (const auto role : {QPalette::Base, QPalette::Button, QPalette::Window}) {
        palette.setColor(role, ground);
    }
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
        palette.setColor(role, text);
    }
    return palette;
}

QString captionOf(const QString &name)
{
    return QString(name).replace(u'&', "&&"_L1);
}

} // namespace

FilterBar::FilterBar(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::FilterBar>())
    , m_problem(new ProblemLabel(this))
    , m_months(MonthNames::of(QLocale::c()))
{
    m_ui->setupUi(this);
    m_ui->filterText->setMaxLength(KeptFilters::longestText);
    m_ui->filterText->setToolTip(filterTip());
    m_ui->filterText->installEventFilter(this);
    for (const State &state : states) {
        m_ui->filterFmlist->addItem(state.name.toString());
    }
    keepCombosCalm(*this);
    m_problem->setObjectName("filterProblem"_L1);
    m_problem->setAutoFillBackground(true);
    m_problem->setFrameShape(QFrame::StyledPanel);
    m_problem->setMargin(2);
    m_problem->hide();
    auto *menu = new QMenu(m_ui->filterKept);
    m_ui->filterKept->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this] { fillKeptMenu(); });
    connect(m_ui->filterText, &QLineEdit::textChanged, this, [this] { read(); });
    connect(m_ui->filterClear, &QToolButton::clicked, this, [this] { clear(); });
    for (QComboBox *combo : findChildren<QComboBox *>()) {
        connect(combo, &QComboBox::currentIndexChanged, this, [this] { read(); });
    }
    setFocusProxy(m_ui->filterText);
    fillKeptMenu();
    mark();
}

FilterBar::~FilterBar()
{
    delete m_problem;
}

void FilterBar::setMonths(const MonthNames &months)
{
    m_months = months;
    read();
}

void FilterBar::setKeptFilters(KeptFilters kept)
{
    m_kept = std::move(kept);
    fillKeptMenu();
}

void FilterBar::setLists(const FilterLists &lists)
{
    QStringList years;
    for (const int year : lists.years) {
        years += QString::number(year);
    }
    fill(*m_ui->filterMode, lists.modes);
    fill(*m_ui->filterCountry, lists.countries);
    fill(*m_ui->filterYear, years);
}

void FilterBar::setCounts(qsizetype shown, qsizetype all)
{
    const auto text = [all](qsizetype some) { return u"%1 of %2"_s.arg(some).arg(all); };
    QLabel &count = *m_ui->filterCount;
    // Room for every count: the fields stand still while one types, and nothing is laid out anew.
    const QFontMetrics metrics = count.fontMetrics();
    count.setFixedSize(
        metrics.horizontalAdvance(text(all)) + 2 * count.margin() + 2, metrics.height() + 2 * count.margin());
    count.setText(m_filter.isEmpty() && shown == all ? QString::number(all) : text(shown));
}

void FilterBar::clear()
{
    setTexts({});
    // Whoever heard of a change has ended it already.
    if (m_isOverruled) {
        setOverruled(false);
        Q_EMIT changed(m_filter);
    }
}

void FilterBar::setOverruled(bool overruled)
{
    m_isOverruled = overruled;
    mark();
}

QString FilterBar::text() const
{
    return m_ui->filterText->text();
}

void FilterBar::setText(const QString &text)
{
    m_ui->filterText->setText(text);
}

bool FilterBar::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched == m_ui->filterText && isKey && m_ui->filterClear->isEnabled()
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            clear();
        }
        return true;
    }
    const bool isMoved = event->type() == QEvent::Resize || event->type() == QEvent::Move;
    if (isMoved && m_problem && m_problem->isVisible()
        && (watched == m_ui->filterText || watched == window())) {
        placeProblem();
    }
    return QWidget::eventFilter(watched, event);
}

void FilterBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_problem) {
        mark();
    }
}

FilterTexts FilterBar::texts() const
{
    return {m_ui->filterText->text(), chosen(*m_ui->filterMode).value_or(QString()),
        chosen(*m_ui->filterCountry).value_or(QString()), chosen(*m_ui->filterYear).value_or(QString()),
        chosen(*m_ui->filterFmlist).value_or(QString())};
}

void FilterBar::setTexts(const FilterTexts &texts)
{
    // One change, however many fields it has.
    m_isReading = false;
    m_ui->filterText->setText(texts.text);
    choose(*m_ui->filterMode, texts.mode);
    choose(*m_ui->filterCountry, texts.country);
    choose(*m_ui->filterYear, texts.year);
    const auto known = std::ranges::find(states, QStringView(texts.fmlist), &State::name);
    choose(*m_ui->filterFmlist, known == states.end() ? QString() : texts.fmlist);
    m_isReading = true;
    read();
}

void FilterBar::read()
{
    if (!m_isReading) {
        return;
    }
    const FilterReading reading = readFilter(m_ui->filterText->text(), m_months);
    LogFilter filter;
    filter.terms = reading.problem.isEmpty() ? reading.terms : m_filter.terms;
    filter.mode = chosen(*m_ui->filterMode);
    filter.country = chosen(*m_ui->filterCountry);
    if (const auto year = chosen(*m_ui->filterYear)) {
        filter.year = year->toInt();
    }
    if (const int state = m_ui->filterFmlist->currentIndex(); state > 0) {
        filter.fmlist = states[static_cast<std::size_t>(state) - 1].state;
    }
    const bool isNew = filter != m_filter;
    m_filter = std::move(filter);
    tell(reading.problem);
    mark();
    if (isNew) {
        Q_EMIT changed(m_filter);
    }
}

void FilterBar::tell(const QString &problem)
{
    if (problem == m_problem->text()) {
        return;
    }
    if (m_problem->parentWidget() != window()) {
        m_problem->setParent(window());
        window()->installEventFilter(this);
    }
    m_problem->showProblem(problem, m_ui->filterText);
    m_problem->setVisible(!problem.isEmpty());
    placeProblem();
}

void FilterBar::placeProblem()
{
    // Over the grid: what is looked at does not jump while one types.
    const QPoint place = m_ui->filterText->mapTo(window(), QPoint(0, m_ui->filterText->height() + 1));
    const QSize wanted = m_problem->sizeHint();
    m_problem->setGeometry(
        QRect(place, QSize(qMin(wanted.width(), window()->width() - place.x()), wanted.height())));
    m_problem->raise();
}

void FilterBar::mark()
{
    const auto set = [this](QWidget &field, bool isActive) {
        field.setPalette(isActive ? marked(palette()) : QPalette());
    };
    set(*m_ui->filterText, !m_filter.terms.empty());
    set(*m_ui->filterMode, m_filter.mode.has_value());
    set(*m_ui->filterCountry, m_filter.country.has_value());
    set(*m_ui->filterYear, m_filter.year.has_value());
    set(*m_ui->filterFmlist, m_filter.fmlist.has_value());
    const bool someAreHidden = m_isOverruled || !m_filter.isEmpty();
    set(*m_ui->filterCount, someAreHidden);
    m_ui->filterCount->setAutoFillBackground(someAreHidden);
    m_ui->filterClear->setEnabled(someAreHidden || !m_ui->filterText->text().isEmpty());
}

void FilterBar::fillKeptMenu()
{
    QMenu *menu = m_ui->filterKept->menu();
    menu->clear();
    qDeleteAll(menu->findChildren<QMenu *>(Qt::FindDirectChildrenOnly));
    QAction *saving = menu->addAction(u"&Save this filter…"_s, this, [this] { saveFilter(); });
    saving->setObjectName("filterSave"_L1);
    saving->setEnabled(!m_filter.isEmpty() && m_problem->text().isEmpty());
    if (m_kept.all().empty()) {
        return;
    }
    menu->addSeparator();
    for (const KeptFilters::Kept &kept : m_kept.all()) {
        menu->addAction(captionOf(kept.name), this, [this, texts = kept.texts] { setTexts(texts); });
    }
    menu->addSeparator();
    QMenu *renaming = menu->addMenu(u"&Rename"_s);
    renaming->setObjectName("filterRename"_L1);
    QMenu *removing = menu->addMenu(u"R&emove"_s);
    removing->setObjectName("filterRemove"_L1);
    for (const KeptFilters::Kept &kept : m_kept.all()) {
        const QString name = kept.name;
        renaming->addAction(captionOf(name), this, [this, name] { renameFilter(name); });
        removing->addAction(captionOf(name), this, [this, name] { removeFilter(name); });
    }
}

QString FilterBar::askName(const QString &title, const QString &offered)
{
    QString name = inputBox(this, u"Name of the filter:"_s, title, offered)
                       .simplified()
                       .left(KeptFilters::longestName)
                       .trimmed();
    const bool isOther = name.compare(offered, Qt::CaseInsensitive) != 0;
    if (isOther && m_kept.find(name)
        && !askYesNo(this, u"There is a filter \"%1\" already. Replace it?"_s.arg(name), title)) {
        return {};
    }
    return name;
}

void FilterBar::saveFilter()
{
    const QString name = askName(u"Save Filter"_s, {});
    if (!name.isEmpty() && !m_kept.save(name, texts())) {
        showMessage(this, u"There are %1 kept filters, and no room for more."_s.arg(KeptFilters::most));
    }
}

void FilterBar::renameFilter(const QString &name)
{
    const QString other = askName(u"Rename Filter"_s, name);
    if (!other.isEmpty()) {
        m_kept.rename(name, other);
    }
}

void FilterBar::removeFilter(const QString &name)
{
    if (askYesNo(this, u"Remove the kept filter \"%1\"?"_s.arg(name), u"Remove Filter"_s)) {
        m_kept.remove(name);
    }
}

} // namespace quillon
