#include "core/ui/form1.h"

#include "core/ui/results.h"
#include "fmlist/resultlegs.h"
#include "fmlist/weblinks.h"
#include "net/inet1.h"
#include "platform/runtimeerror.h"
#include "txdb/derivedcells.h"
#include "ui/busypointer.h"
#include "ui/desktop.h"
#include "ui/messages.h"
#include "ui/statustext.h"
#include "ui/widgetstate.h"
#include "ui_form1.h"

#include <QAbstractButton>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString askedFor(const SearchRequest &request)
{
    QStringList parts {request.frequency + u" MHz"_s};
    if (!request.pi.isEmpty()) {
        parts += u"PI code "_s + request.pi;
    }
    if (!request.ps.isEmpty()) {
        parts += u"RDS name "_s + request.ps;
    }
    return parts.join(u", "_s);
}

} // namespace

// Search FMList.
void Form1::Command11_Click()
{
    searchForStation({m_form->frequency(), m_form->piCode(), m_form->rdsName()});
}

void Form1::searchForStation(const SearchRequest &request)
{
    m_inet->requireIdle(u"Searching FMList"_s);
    m_results->showStations();
    const BusyPointer busy;
    const Disabled disabled(*m_form->button(u"Command11"_s));
    searchFmlist(request);
}

void Form1::searchFmlist(const SearchRequest &request)
{
    m_status->clear();
    m_results->clearStations();
    m_matchCount = 0;
    const auto url = searchUrl(m_config.settings().fmlistUrl, request, m_options.regional.codePage);
    if (!url) {
        return;
    }
    const SearchAnswer answer = readSearchAnswer(m_inet->openUrl(*url), m_options.regional.numbers);
    m_matchCount = answer.matches;
    m_status->setText(answer.status);
    m_results->setStations(answer.results,
        (answer.status.isEmpty() ? u"FMList named no station"_s : answer.status) + u'\n' + askedFor(request),
        highlightedResult(answer.results, request.pi));
    m_searchedFrequency = request.frequency;
    m_searchedMode = m_form->mode();
    showLegs();
    if (answer.failure) {
        throw RuntimeError(*answer.failure);
    }
}

// How far and in which direction each station is, with a star at the nearest that can have been heard.
void Form1::showLegs()
{
    const Settings &settings = m_config.settings();
    const QList<SearchResult> &results = m_results->stations();
    const auto legs = legsOf(results, homePosition(settings));
    m_results->setLegs(legs, settings.inMiles() ? DistanceUnit::Miles : DistanceUnit::Kilometres,
        nearestPlausible(results, legs, m_searchedFrequency, m_searchedMode));
}

// A result of Search FMList: copies it into the form and stores it.
void Form1::List2_DblClick(int line)
{
    takeOverResult(m_results->station(line));
}

void Form1::takeOverResult(const SearchResult &result)
{
    if (!askYesNo(this, u"Update record with search results?"_s, u"Update Record"_s)) {
        return;
    }
    m_form->takeOver(result);
    if (m_form->state() == EntryForm::State::New) {
        addEntry(u"Add"_s);
    } else if (m_selected >= 0) {
        storeUpdate(u"Take over"_s);
    }
}

// Google: a web search for the station in the form.
void Form1::Command5_Click()
{
    HyperJump(webSearchUrl(m_config.settings().searchUrl, m_form->piCode(), m_form->frequency(),
        m_form->rdsName(), m_form->site()));
}

// Today's Propagation Map.
void Form1::menuFMLPropMap_Click()
{
    HyperJump(propagationMapUrl(m_config.settings().fmlistUrl, localNow()));
}

// Today's Propagation Map for You.
void Form1::menuFMLYouProp_Click()
{
    const auto url =
        ownPropagationMapUrl(m_config.settings().fmlistUrl, localNow(), m_config.settings().omid);
    if (!url) {
        showMessage(this, noOmidText.toString());
        return;
    }
    HyperJump(*url);
}

// Online Help: the supplied manual, unless the settings name another page.
void Form1::menuHelpOnlineHelp_Click()
{
    const QString name = u"manual.html"_s;
    const QString &url = m_config.settings().helpUrl;
    HyperJump(!url.isEmpty() ? url : findFile(m_options.suppliedDir, name).value_or(m_config.path(name)));
}

} // namespace quillon
