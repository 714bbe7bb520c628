#include "ui/problemwatch.h"

#include "ui/problemlabel.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>

#include <vector>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// A red frame over a field. It lies above, so that the field keeps its style, its colours and its size.
class ProblemFrame : public QWidget
{
public:
    explicit ProblemFrame(QWidget &field)
        : QWidget(&field)
    {
        setObjectName(u"problemFrame"_s);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        hide();
        field.installEventFilter(this);
    }

    void setShown(bool shown)
    {
        setGeometry(parentWidget()->rect());
        raise();
        setVisible(shown);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == parent() && event->type() == QEvent::Resize) {
            setGeometry(parentWidget()->rect());
        }
        return QWidget::eventFilter(watched, event);
    }

    void paintEvent(QPaintEvent * /*event*/) override
    {
        constexpr qreal width = 2;
        constexpr qreal radius = 2;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(problemColour(parentWidget()->palette().color(QPalette::Base)), width));
        constexpr qreal inside = width / 2;
        painter.drawRoundedRect(QRectF(rect()).adjusted(inside, inside, -inside, -inside), radius, radius);
    }
};

QString textOf(const QWidget &field)
{
    if (const auto *line = qobject_cast<const QLineEdit *>(&field)) {
        return line->text();
    }
    if (const auto *lines = qobject_cast<const QPlainTextEdit *>(&field)) {
        return lines->toPlainText();
    }
    const auto *combo = qobject_cast<const QComboBox *>(&field);
    return combo ? combo->currentText() : QString();
}

class ProblemWatch : public QObject
{
public:
    ProblemWatch(ProblemLabel &label, const CodePage &codePage, const QList<WatchedField> &fields)
        : QObject(&label)
        , m_label(label)
        , m_codePage(codePage)
    {
        for (const WatchedField &field : fields) {
            const std::size_t index = m_watched.size();
            m_watched.push_back({field, new ProblemFrame(*field.field), {}});
            const auto changed = [this, index] { check(m_watched[index]); };
            if (auto *line = qobject_cast<QLineEdit *>(field.field)) {
                connect(line, &QLineEdit::textChanged, this, changed);
            } else if (auto *lines = qobject_cast<QPlainTextEdit *>(field.field)) {
                connect(lines, &QPlainTextEdit::textChanged, this, changed);
            } else if (auto *combo = qobject_cast<QComboBox *>(field.field)) {
                connect(combo, &QComboBox::currentTextChanged, this, changed);
            }
            changed();
        }
    }

private:
    struct Watched
    {
        WatchedField field;
        ProblemFrame *frame; // the field's own
        QString problem;
    };

    void check(Watched &watched)
    {
        const QString problem = fieldProblem(watched.field.kind, textOf(*watched.field.field), m_codePage);
        if (problem == watched.problem) {
            return;
        }
        watched.problem = problem;
        watched.frame->setShown(!problem.isEmpty());
        watched.field.field->setAccessibleDescription(problem);
        QStringList problems;
        for (const Watched &one : m_watched) {
            if (!one.problem.isEmpty() && !problems.contains(one.problem)) {
                problems += one.problem;
            }
        }
        m_label.tell(problems.join(u"; "_s));
    }

    ProblemLabel &m_label;
    CodePage m_codePage;
    std::vector<Watched> m_watched;
};

} // namespace

void watchForProblems(ProblemLabel &label, const CodePage &codePage, const QList<WatchedField> &fields)
{
    new ProblemWatch(label, codePage, fields);
}

} // namespace quillon
