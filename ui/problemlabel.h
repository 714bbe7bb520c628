#pragma once

#include <QLabel>
#include <QPointer>

namespace quillon {

/// The red that is readable on this background.
[[nodiscard]] QColor problemColour(const QColor &background);

/// A small text below or beside fields that says what is wrong with them. Its space is kept while it is
/// empty.
class ProblemLabel : public QLabel
{
    Q_OBJECT
    /// So many lines keep their space; a wrapped text that needs more takes it.
    Q_PROPERTY(int lines READ lines WRITE setLines)

public:
    explicit ProblemLabel(QWidget *parent = nullptr);

    [[nodiscard]] int lines() const { return m_lines; }
    void setLines(int lines);

    /// Shows a text, or none, and tells assistive tools.
    void tell(const QString &problem);
    /// Shows the problem of a field and tells assistive tools. An empty text clears the line.
    void showProblem(const QString &problem, QWidget *field);
    void clearProblem();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void chooseColour();
    void takeRoom();

    int m_lines = 1;
    QPointer<QWidget> m_field;
};

} // namespace quillon
