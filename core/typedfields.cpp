#include "core/typedfields.h"

#include "core/linebreaks.h"

namespace quillon {

QString typedField(LogField field, const QString &text)
{
    switch (field) {
    case LogField::Notes:
        return withLineEnds(text);
    case LogField::PiCode:
        return withoutLineBreaks(text.trimmed().toUpper());
    case LogField::RdsName:
        return withoutLineBreaks(QString(text).replace(u' ', u'_'));
    case LogField::Power:
        return withoutLineBreaks(text.toUpper());
    default:
        return withoutLineBreaks(text);
    }
}

} // namespace quillon
