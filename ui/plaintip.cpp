#include "ui/plaintip.h"

#include <QTextDocument>

namespace quillon {

using namespace Qt::StringLiterals;

QString wrappedTip(const QString &text)
{
    return text.isEmpty() ? QString()
                          : u"<qt>"_s + text.toHtmlEscaped().replace(u'\n', u"<br>"_s) + u"</qt>"_s;
}

QString plainTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? wrappedTip(text) : text;
}

} // namespace quillon
