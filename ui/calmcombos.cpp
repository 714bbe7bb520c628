#include "ui/calmcombos.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QSignalBlocker>

namespace quillon {

namespace {

// The item that the text means: the same, the same in another case, else the first that begins so.
int itemOfText(const QComboBox &combo)
{
    const QString text = combo.currentText();
    if (text.isEmpty()) {
        return -1;
    }
    for (const Qt::MatchFlags match : {Qt::MatchFlags(Qt::MatchExactly | Qt::MatchCaseSensitive),
             Qt::MatchFlags(Qt::MatchFixedString), Qt::MatchFlags(Qt::MatchStartsWith)}) {
        if (const int item = combo.findText(text, match); item >= 0) {
            return item;
        }
    }
    return -1;
}

bool isArrow(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Up || event.key() == Qt::Key_Down || event.key() == Qt::Key_PageUp
        || event.key() == Qt::Key_PageDown;
}

class CalmCombo : public QObject
{
public:
    CalmCombo(QComboBox &combo, const std::function<bool()> &atRest)
        : QObject(&combo)
        , m_combo(combo)
        , m_atRest(atRest)
    {
        combo.installEventFilter(this);
        if (combo.isEditable()) {
            combo.view()->installEventFilter(this);
        }
        // The wheel alone would take the focus along.
        combo.setFocusPolicy(Qt::StrongFocus);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != &m_combo) {
            if (event->type() == QEvent::Show) {
                openAtText();
            }
            return false;
        }
        switch (event->type()) {
        case QEvent::Wheel:
            if (!m_combo.hasFocus() || !m_combo.isEnabled() || (m_atRest && m_atRest())) {
                event->accept();
                return true;
            }
            beginAtText();
            return false;
        case QEvent::KeyPress:
            if (isArrow(*static_cast<QKeyEvent *>(event))) {
                beginAtText();
            }
            return false;
        default:
            return false;
        }
    }

private:
    void openAtText()
    {
        if (m_combo.isEditable()) {
            m_combo.view()->setCurrentIndex(
                m_combo.model()->index(itemOfText(m_combo), m_combo.modelColumn(), m_combo.rootModelIndex()));
        }
    }

    void beginAtText()
    {
        const int item = itemOfText(m_combo);
        if (m_combo.isEditable() && item != m_combo.currentIndex()) {
            const QSignalBlocker nothingHasChanged(m_combo);
            const QString text = m_combo.currentText();
            m_combo.setCurrentIndex(item);
            m_combo.setEditText(text);
        }
    }

    QComboBox &m_combo;
    std::function<bool()> m_atRest;
};

} // namespace

void keepCombosCalm(QWidget &window, const std::function<bool()> &atRest)
{
    const QList<QComboBox *> combos = window.findChildren<QComboBox *>();
    for (QComboBox *combo : combos) {
        new CalmCombo(*combo, atRest);
    }
}

} // namespace quillon
