#include "fmlist/tags.h"

namespace quillon {

QString SetTagValue(QStringView text, QStringView key, QStringView value)
{
    const QString name = key + u'=';
    const QString tag = name + value + u'#';
    QString tags;
    bool isReplaced = false;
    qsizetype begin = 0;
    for (qsizetype end = text.indexOf(u'#'); end >= 0; end = text.indexOf(u'#', begin)) {
        const QStringView old = text.sliced(begin, end - begin + 1);
        const bool isOfKey = old.contains(name);
        tags += isOfKey ? QStringView(tag) : old;
        isReplaced = isReplaced || isOfKey;
        begin = end + 1;
    }
    return isReplaced ? tags : tags + tag;
}

} // namespace quillon
