#pragma once

#include <QLabel>
#include <QPointer>

namespace quillon {

/// A small line below a field that says what is wrong with it. Its space is kept while it is empty.
class ProblemLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ProblemLabel(QWidget *parent = nullptr);

    /// Shows the problem of a field and tells assistive tools. An empty text clears the line.
    void showProblem(const QString &problem, QWidget *field);
    void clearProblem();

protected:
    void changeEvent(QEvent *event) override;

private:
    void chooseColour();

    QPointer<QWidget> m_field;
};

} // namespace quillon
