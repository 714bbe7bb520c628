#include "stats/ui/calendarchart.h"

#include "core/manyentries.h"
#include "stats/collectiontables.h"

#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int weeks = 54;
constexpr int weekdays = 7;
constexpr int margin = 10;

// The measures of the calendar in a width, with a font.
struct Measures
{
    Measures(int width, const QFontMetrics &font)
        : labels(font.horizontalAdvance(u"Wed  2025 "_s))
        , line(font.height())
        , cell(std::clamp((width - labels - 2 * margin) / qreal {weeks}, 5.0, 24.0))
    {
    }
    [[nodiscard]] int yearHeight() const
    {
        return 2 * line + static_cast<int>(std::ceil(cell * weekdays)) + margin;
    }
    [[nodiscard]] QRectF day(std::size_t place, int column, int weekday) const
    {
        const qreal top = margin + static_cast<qreal>(place) * yearHeight() + 2 * line;
        return {margin + labels + column * cell, top + weekday * cell, cell - 1, cell - 1};
    }

    int labels;
    int line;
    qreal cell;
};

// Monday is 0.
int weekdayOf(DateTime day)
{
    constexpr qint64 thursday = 3;
    const qint64 days = day.seconds / secondsPerDay;
    return static_cast<int>(((days + thursday) % weekdays + weekdays) % weekdays);
}

int daysIn(int year)
{
    return static_cast<int>((dayOfYear(year + 1, 0).seconds - dayOfYear(year, 0).seconds) / secondsPerDay);
}

QRectF placeOf(const Measures &measures, std::size_t place, int year, int day)
{
    const int weekday = weekdayOf(dayOfYear(year, 0)) + day;
    return measures.day(place, weekday / weekdays, weekday % weekdays);
}

QString shortDay(const YearFigures &year, int day)
{
    static const MonthNames english = MonthNames::of(QLocale::c());
    return formatted(dayOfYear(year.year, day), u"d mmm", english);
}

QString yearText(const YearFigures &year)
{
    if (year.count == 0) {
        return u"no receptions"_s;
    }
    const QString all = receptionCount(year.count);
    return year.firstEs < 0 ? all
                            : all
            + u", Es from %1 to %2: %3 days, on %4 of them"_s.arg(shortDay(year, year.firstEs),
                shortDay(year, year.lastEs), QString::number(year.lastEs - year.firstEs + 1),
                QString::number(year.daysWithEs));
}

} // namespace

void CalendarChart::setYears(std::shared_ptr<const std::vector<YearFigures>> years)
{
    m_years = std::move(years);
    m_most = 0;
    for (const YearFigures &year : *m_years) {
        m_most = std::max(m_most, *std::ranges::max_element(year.days));
    }
    setAccessibleDescription(m_years->empty() ? QString() : yearText(m_years->back()));
    setMinimumHeight(pictureHeight(width(), font()));
    updateGeometry();
    update();
}

QSize CalendarChart::sizeHint() const
{
    constexpr int usual = 800;
    return {usual, pictureHeight(usual, font())};
}

int CalendarChart::pictureHeight(int width, const QFont &font) const
{
    const auto years = m_years ? static_cast<int>(m_years->size()) : 0;
    return 2 * margin + std::max(years, 1) * Measures(width, QFontMetrics(font)).yearHeight();
}

// The latest year stands above.
QRectF CalendarChart::dayPlace(std::size_t year, int day) const
{
    return placeOf(Measures(width(), fontMetrics()), m_years->size() - 1 - year, (*m_years)[year].year, day);
}

void CalendarChart::paintChart(QPainter &painter, QSize size, const ChartStyle &style) const
{
    if (!m_years || m_years->empty()) {
        painter.setPen(style.quiet);
        painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, u"No receptions."_s);
        return;
    }
    for (std::size_t year = 0; year < m_years->size(); ++year) {
        paintYear(painter, year, size.width(), style);
    }
}

void CalendarChart::paintYear(QPainter &painter, std::size_t year, int width, const ChartStyle &style) const
{
    const YearFigures &figures = (*m_years)[year];
    const Measures measures(width, painter.fontMetrics());
    const std::size_t place = m_years->size() - 1 - year;
    const QRectF corner = measures.day(place, 0, 0);
    painter.setPen(style.text);
    painter.drawText(QPointF(margin, corner.top() - measures.line - painter.fontMetrics().descent()),
        QString::number(figures.year) + u"   "_s + yearText(figures));
    painter.setPen(style.quiet);
    for (int month = 1; month <= 12; ++month) {
        const DateTime first = fromCivil({figures.year, month, 1}).value_or(DateTime());
        const auto day =
            static_cast<int>((first.seconds - dayOfYear(figures.year, 0).seconds) / secondsPerDay);
        const qreal left = placeOf(measures, place, figures.year, day).left();
        painter.drawText(QPointF(left, corner.top() - painter.fontMetrics().descent()),
            shortDay(figures, day).section(u' ', 1));
    }
    if (measures.cell * 2 >= painter.fontMetrics().ascent()) {
        for (const auto &[weekday, name] : {std::pair(0, u"Mon"_s), {3, u"Thu"_s}, {6, u"Sun"_s}}) {
            const QRectF square = measures.day(place, 0, weekday);
            painter.drawText(QRectF(margin, square.center().y() - measures.line, measures.labels - 4.0,
                                 2.0 * measures.line),
                Qt::AlignRight | Qt::AlignVCenter, name);
        }
    }
    // By the logarithm: a day of one reception is seen beside one of hundreds.
    constexpr float faintest = 0.25F;
    const float scale = std::log1p(static_cast<float>(m_most));
    painter.setPen(Qt::NoPen);
    for (int day = 0; day < daysIn(figures.year); ++day) {
        const qint32 count = figures.days[static_cast<std::size_t>(day)];
        const float share = faintest + (1 - faintest) * std::log1p(static_cast<float>(count)) / scale;
        painter.setBrush(count == 0 ? style.grid : between(style.grid, style.series(0, 1), share));
        painter.drawRect(placeOf(measures, place, figures.year, day));
    }
}

std::optional<CalendarChart::Day> CalendarChart::dayAt(QPoint place) const
{
    if (!m_years || m_years->empty()) {
        return std::nullopt;
    }
    const Measures measures(width(), fontMetrics());
    const int fromTop = (place.y() - margin) / measures.yearHeight();
    if (place.y() < margin || fromTop >= static_cast<int>(m_years->size())) {
        return std::nullopt;
    }
    const std::size_t year = m_years->size() - 1 - static_cast<std::size_t>(fromTop);
    for (int day = 0; day < daysIn((*m_years)[year].year); ++day) {
        if (dayPlace(year, day).adjusted(0, 0, 1, 1).contains(place)) {
            return Day {year, day};
        }
    }
    return std::nullopt;
}

QString CalendarChart::tip(QPoint place) const
{
    const auto found = dayAt(place);
    if (!found) {
        return {};
    }
    const YearFigures &year = (*m_years)[found->year];
    return dateText(dayOfYear(year.year, found->day)) + u": "_s
        + receptionCount(year.days[static_cast<std::size_t>(found->day)]);
}

void CalendarChart::choose(QPoint place)
{
    if (const auto found = dayAt(place)) {
        Q_EMIT dayChosen(dayOfYear((*m_years)[found->year].year, found->day));
    }
}

} // namespace quillon
