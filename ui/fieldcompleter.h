#pragma once

#include <QCompleter>
#include <QStringListModel>

#include <functional>

class QLineEdit;

namespace quillon {

/// Offers texts in a list below a field while one types, and all of them on the arrow down. The field changes
/// only when one of them is chosen, by a click or by arrow and Enter.
class FieldCompleter : public QCompleter
{
    Q_OBJECT

public:
    /// `texts` is asked each time that the field gets the focus. The field owns the object.
    FieldCompleter(QLineEdit &field, std::function<QStringList()> texts);

    /// A text is marked in the open list: Enter chooses it, and is meant for nothing else.
    [[nodiscard]] bool isChoosing() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void offer();

    QLineEdit &m_field;
    QStringListModel m_model;
    std::function<QStringList()> m_texts;
};

} // namespace quillon
