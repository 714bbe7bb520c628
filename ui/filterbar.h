#pragma once

#include "core/logfilter.h"
#include "ui/keptfilters.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QComboBox;

namespace quillon {

namespace Ui {
class FilterBar;
}

class ProblemLabel;

/// The bar above the log that says which receptions are shown.
class FilterBar : public QWidget
{
    Q_OBJECT

public:
    explicit FilterBar(QWidget *parent = nullptr);
    ~FilterBar() override;

    /// Dates are read with these names; English ones are always known.
    void setMonths(const MonthNames &months);
    /// Kept filters are those of this file.
    void setKeptFilters(KeptFilters kept);

    /// What the combos offer. A choice that is no longer in the log stays while it is chosen.
    void setLists(const FilterLists &lists);
    /// How many receptions are shown, of how many.
    void setCounts(qsizetype shown, qsizetype all);

    /// What the bar says; while its text cannot be read, what it said last.
    [[nodiscard]] const LogFilter &filter() const { return m_filter; }
    /// Rows are shown that something else than the bar chose: the bar is marked, and clear() ends that, too.
    void setOverruled(bool overruled);
    [[nodiscard]] bool isOverruled() const { return m_isOverruled; }

    /// Empties all fields. Says so, even when they are empty, when the bar was overruled.
    void clear();
    /// What stands in the box.
    [[nodiscard]] QString text() const;
    /// Puts a text into the box; the combos stay.
    void setText(const QString &text);

Q_SIGNALS:
    void changed(const quillon::LogFilter &filter);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fillKeptMenu();
    void saveFilter();
    void renameFilter(const QString &name);
    void removeFilter(const QString &name);
    /// A name that was typed, one line of bounded length; empty when cancelled or when what has it shall
    /// stay.
    [[nodiscard]] QString askName(const QString &title, const QString &offered);
    [[nodiscard]] FilterTexts texts() const;
    void setTexts(const FilterTexts &texts);
    void read();
    void tell(const QString &problem);
    void placeProblem();
    void mark();

    std::unique_ptr<Ui::FilterBar> m_ui;
    QPointer<ProblemLabel> m_problem; ///< in the window, above what is below the box
    MonthNames m_months;
    KeptFilters m_kept;
    LogFilter m_filter;
    bool m_isReading = true;
    bool m_isOverruled = false;
};

} // namespace quillon
