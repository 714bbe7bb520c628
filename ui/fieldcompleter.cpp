#include "ui/fieldcompleter.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

namespace quillon {

FieldCompleter::FieldCompleter(QLineEdit &field, std::function<QStringList()> texts)
    : QCompleter(&field)
    , m_field(field)
    , m_texts(std::move(texts))
{
    setModel(&m_model);
    setCaseSensitivity(Qt::CaseInsensitive);
    setFilterMode(Qt::MatchContains);
    // The field's own completer would fill it while one goes through the list.
    setWidget(&field);
    connect(&field, &QLineEdit::textEdited, this, [this] { offer(); });
    connect(this, qOverload<const QString &>(&QCompleter::activated), &field, [this](const QString &text) {
        m_field.setText(text);
        Q_EMIT m_field.textEdited(text);
        popup()->hide();
    });
}

bool FieldCompleter::isChoosing() const
{
    return popup()->isVisible() && popup()->currentIndex().isValid();
}

void FieldCompleter::offer()
{
    setCompletionPrefix(m_field.text());
    // Nothing is offered that stands there already.
    if (completionCount() == 0 || (completionCount() == 1 && currentCompletion() == m_field.text())
        || !m_field.hasFocus()) {
        popup()->hide();
        return;
    }
    complete();
}

bool FieldCompleter::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_field) {
        const bool isFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
        if (isFocus && static_cast<QFocusEvent *>(event)->reason() == Qt::PopupFocusReason) {
            // The list itself came or went.
        } else if (event->type() == QEvent::FocusIn) {
            m_model.setStringList(m_texts());
        } else if (event->type() == QEvent::FocusOut) {
            // The list goes first, so that the field learns that it was left.
            popup()->hide();
        } else if (event->type() == QEvent::KeyPress) {
            const auto *key = static_cast<QKeyEvent *>(event);
            if (key->key() == Qt::Key_Down && key->modifiers() == Qt::NoModifier && !popup()->isVisible()) {
                offer();
                return popup()->isVisible();
            }
        }
    }
    return QCompleter::eventFilter(watched, event);
}

} // namespace quillon
