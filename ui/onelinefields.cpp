#include "ui/onelinefields.h"

#include "core/linebreaks.h"

#include <QLineEdit>

namespace quillon {

namespace {

QString onOneLine(QString text)
{
    while (text.endsWith(u'\n') || text.endsWith(u'\r')) {
        text.chop(1);
    }
    return withoutLineBreaks(text).replace(u'\r', u' ').replace(u'\t', u' ');
}

// A line edit shows a pasted line break as a sign of its own, but keeps it.
void mend(QLineEdit &field)
{
    const QString text = field.text();
    const QString mended = onOneLine(text);
    if (mended != text) {
        const int fromEnd = static_cast<int>(text.size()) - field.cursorPosition();
        field.setText(mended);
        field.setCursorPosition(static_cast<int>(mended.size()) - fromEnd);
        field.setModified(true);
    }
}

} // namespace

void keepFieldsOnOneLine(QWidget &window)
{
    const QList<QLineEdit *> fields = window.findChildren<QLineEdit *>();
    for (QLineEdit *field : fields) {
        QObject::connect(field, &QLineEdit::textEdited, field, [field] { mend(*field); });
    }
}

} // namespace quillon
