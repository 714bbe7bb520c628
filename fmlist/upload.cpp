#include "fmlist/upload.h"

#include "fmlist/tags.h"
#include "net/textencoding.h"
#include "net/webaddress.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

bool hasSender(const Settings &settings)
{
    return !settings.omid.isEmpty()
        || (!settings.email.isEmpty() && !settings.homeLatitude.isEmpty()
            && !settings.homeLongitude.isEmpty());
}

QString sender(const Settings &settings, const CodePage &codePage)
{
    if (!settings.omid.isEmpty()) {
        return u"omid="_s + settings.omid;
    }
    return u"email="_s + URLEncode(settings.email, codePage) + u"&latitude="_s
        + URLEncode(settings.homeLatitude, codePage) + u"&longitude="_s
        + URLEncode(settings.homeLongitude, codePage);
}

bool isReportedMode(QStringView prop)
{
    return prop == u"Es" || prop == u"Tropo" || prop == u"MS";
}

} // namespace

QByteArray uploadUrl(const QString &fmlistUrl, const CodePage &codePage)
{
    const QString url = fmlistUrl + u"/logpost1.php"_s;
    return sendable(url, codePage);
}

bool isEligible(const LogEntry &entry)
{
    return !isDeleted(entry) && !entry.uid.isEmpty() && !entry.fmlist.contains(u"fml=sent"_s);
}

int eligibleCount(const Logbook &log)
{
    return static_cast<int>(std::count_if(log.begin(), log.end(), isEligible));
}

std::optional<QString> uploadRefusal(const Settings &settings, const Logbook &log)
{
    if (!hasSender(settings)) {
        return u"To submit logs to FMList either supply your OMID or (e-mail address, home latitude and home longitude)"_s;
    }
    if (eligibleCount(log) == 0) {
        return u"You have no logs ready to be uploaded to FMList. To make logs ready you need to lookup the "
               u"UID "
               "from FMList this can be done by selecting your log entry then clicking on search FMList. "
               "Once the "
               "search results are populated then double click on the correct transmitter and update your "
               "log "
               "record"_s;
    }
    return std::nullopt;
}

QByteArray uploadBody(const LogEntry &entry, const Settings &settings, const CodePage &codePage)
{
    const QString dateTime = formatted(entry.dateTime, u"dd-mm-yyyy hh:nn:ss", {});
    QString body = sender(settings, codePage) + u"&freq="_s + URLEncode(entry.freq, codePage) + u"&pi="_s
        + entry.piCode + u"&uid="_s + entry.uid + u"&dateTime="_s + URLEncode(dateTime, codePage);
    if (isReportedMode(entry.prop)) {
        body += u"&propa="_s + entry.prop;
    }
    return codePage.encode(body);
}

bool isAccepted(QStringView answer)
{
    return !answer.contains(u"Error ");
}

Upload uploadLogs(const Logbook &log, const Settings &settings, const CodePage &codePage, const Post &post,
    const Accepted &accepted, const Answered &answered)
{
    const int count = eligibleCount(log);
    Upload upload;
    int done = 0;
    try {
        for (qint32 i = 0; i < log.count(); ++i) {
            if (!isEligible(log.entry(i))) {
                continue;
            }
            const QString answer = post(uploadBody(log.entry(i), settings, codePage));
            if (isAccepted(answer)) {
                accepted(i);
                ++upload.accepted;
            }
            if (!answered(answer, ++done, count)) {
                break;
            }
        }
    } catch (...) {
        upload.failure = std::current_exception();
    }
    return upload;
}

QString sentField(const QString &fmlist)
{
    return SetTagValue(fmlist, stateTag, u"sent");
}

} // namespace quillon
