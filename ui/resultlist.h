#pragma once

#include <QString>
#include <QStringList>
#include <QTableView>

#include <optional>

namespace quillon {

class ResultModel;

/// A heading of a result list, and a text as wide as the column's usual ones.
struct ResultHeading
{
    QString caption;
    QString usualText;
    bool centred = false;
    bool beside = false; ///< what setBeside says, not part of the lines; those columns come last
};

/// What stands beside the lines of a result list.
struct ResultsBeside
{
    QList<QStringList> cells; ///< for each line, in the order in which the lines were set
    std::optional<qsizetype> marked; ///< the line that has a star
    QString reason; ///< why it has one
};

/// A list of result lines: fields joined by tabs, shown in columns with headings. Lines count from 0.
class ResultList : public QTableView
{
    Q_OBJECT

public:
    explicit ResultList(QWidget *parent = nullptr);

    void setHeadings(const QList<ResultHeading> &headings);
    void clear();
    void setLines(const QStringList &lines);
    /// Fills the columns beside the present lines.
    void setBeside(const ResultsBeside &beside);

    [[nodiscard]] int count() const;
    /// The line as it was given, tabs and all. Throws "Subscript out of range".
    [[nodiscard]] QString text(int line) const;
    /// Where the line stood among the lines that were set, whatever the list is sorted by. Throws as text.
    [[nodiscard]] int given(int line) const;
    /// The highlighted line, -1 when none is.
    [[nodiscard]] int listIndex() const;
    void setListIndex(int line);

    /// What an empty list says.
    void setEmptyText(const QString &text);
    [[nodiscard]] const QString &emptyText() const { return m_emptyText; }

Q_SIGNALS:
    /// The user double-clicked a line, or pressed Enter on it.
    void lineActivated(int line);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void requireLine(int line) const;
    void sortByColumn(int column);

    ResultModel *m_model;
    QString m_emptyText;
};

} // namespace quillon
