#include "fmlist/weblinks.h"

#include <QStringList>

namespace quillon {

using namespace Qt::StringLiterals;

QString webSearchUrl(const QString &prefix, const QString &pi, const QString &frequency,
    const QString &rdsName, const QString &transmitter)
{
    const QString name = rdsName.trimmed().replace(u'_', u' ');
    const QStringList words {pi.trimmed(), frequency.trimmed(), name, transmitter.trimmed()};
    return prefix + words.join(u' ').replace(u' ', u'+');
}

QString propagationMapUrl(const QString &fmlistUrl, DateTime today)
{
    return fmlistUrl + u"/fm_logmap.php?datum="_s + formatted(today, u"yyyy-mm-dd", {}) + u"&band=ALL"_s;
}

std::optional<QString> ownPropagationMapUrl(const QString &fmlistUrl, DateTime today, const QString &omid)
{
    if (omid.isEmpty()) {
        return std::nullopt;
    }
    const QString url = propagationMapUrl(fmlistUrl, today) + u"&hours=0&omid="_s + omid;
    return url;
}

QString callsignUrl(const QString &urlTemplate, const QString &callsign)
{
    const QString plain = QString(callsign).remove(u"/P"_s).remove(u"/M"_s);
    return QString(urlTemplate).replace(u"$CALLSIGN"_s, plain);
}

} // namespace quillon
