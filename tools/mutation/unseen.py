"""Changes that nobody could notice, and why. Each stands for the line as it was and as it became."""

UNSEEN = {
    ("platform/files.cpp", "bytes.resize(2 * size);", "bytes.resize(3 * size);"): "how much room is made ahead",
    ("geo/azimuthal.cpp", "double azimuthThere = 0;", "double azimuthThere = 1;"): "the call below writes over it",
    ("txdb/distances.cpp", "float bearing = 0;", "float bearing = 1;"): "the call below writes over it",
    ("txdb/siteleg.cpp", "shortest(convertRXLatORLonToDecimal(longitude, false))};",
     "shortest(convertRXLatORLonToDecimal(longitude, true))};"): "the middle of a locator has no fourth decimal of a minute",
    ("core/logbook.cpp", ": m_slots(static_cast<std::size_t>(firstCapacity) + 1)",
     ": m_slots(static_cast<std::size_t>(firstCapacity) - 1)"): "slots that are kept free are never filled",
    ("export/webpages.cpp", "if (!m_monthTemplate) {", "if (true) {"): "the same file is read once more",
    ("live/receiversettings.cpp", 'file.clear(); file.beginGroup("source"_L1);', 'file.beginGroup("source"_L1); file.clear();'):
        "clearing takes no notice of groups",
    ("live/ui/receiverdock.cpp", "if (!mayTune() || hertz <= 0) {", "if (!mayTune() || hertz <= 1) {"): "no station is on 1 Hz",
    ("import/ui/importfile_format.cpp", "said.localTime = reading.format.localTime; said.columns.emplace();",
     "said.columns.emplace(); said.localTime = reading.format.localTime;"): "neither needs the other",
    ("stats/ui/rosechart.cpp", "if (outer > inner) {", "if (true) {"): "a sector without an area paints nothing",
    ("platform/files.cpp", "constexpr qint64 second = 1'000'000'000;", "constexpr qint64 second = 1000000001;"):
        "two moments stay two",
    ("net/httpclient.cpp", "self->m_answer.reason = blank < 0 ? QByteArray() : line.mid(blank + 1);",
     "self->m_answer.reason = blank <= 0 ? QByteArray() : line.mid(blank + 1);"): "no blank stands before HTTP/",
    ("net/httpclient.cpp",
     "setOption(transfer, CURLOPT_HEADERFUNCTION, &HttpClient::takeHeader); setOption(transfer, CURLOPT_HEADERDATA, this);",
     "setOption(transfer, CURLOPT_HEADERDATA, this); setOption(transfer, CURLOPT_HEADERFUNCTION, &HttpClient::takeHeader);"):
        "neither needs the other",
    ("fmlist/autosearch.cpp", "return matches > 1 ? Finding::Multi : Finding::None;",
     "return matches >= 1 ? Finding::Multi : Finding::None;"): "one match has returned before",
    ("core/ui/form1_autosearch.cpp", "++tally.failed; tally.failure = error.doing();",
     "tally.failure = error.doing(); ++tally.failed;"): "neither needs the other",
    ("core/ui/entryform.cpp", "setPosition(result.latitude, result.longitude); m_ui->uid->setText(result.uid);",
     "m_ui->uid->setText(result.uid); setPosition(result.latitude, result.longitude);"): "neither needs the other",
    ("stats/openings.cpp", "opening.countries.removeDuplicates(); std::ranges::sort(opening.countries);",
     "std::ranges::sort(opening.countries); opening.countries.removeDuplicates();"): "both leave each once, in order",
    ("backup/backups.cpp", "return parts.year * 12 + parts.month;", "return parts.year * 13 + parts.month;"):
        "each month has a number of its own",
    ("stations/jsontokens.cpp", "bool good = false;", "bool good = true;"): "the call below writes over it",
    ("stations/candidates.cpp", "return hasPlace && std::abs(listed.place.latitude - logged.place.latitude) < nearDegrees",
     "return hasPlace && std::abs(listed.place.latitude - logged.place.latitude) <= nearDegrees"):
        "exactly a tenth of a degree is as good as any other bound",
    ("stations/heardstations.cpp", "return *m_known.insert(text, kilohertzOf(text).value_or(0));",
     "return *m_known.insert(text, kilohertzOf(text).value_or(1));"): "no station is on 1 kHz",
    ("live/grouplines.cpp", "const auto group = groupOf((at < 0 ? line : line.first(at)).trimmed());",
     "const auto group = groupOf((at <= 0 ? line : line.first(at)).trimmed());"): "a line that starts with @ is no group either way",
    ("geo/planeoutlines.cpp", "if (span > m_tolerance && (span > straight || length(to.point) > antipodeDistance / 2)) {",
     "if (span > m_tolerance && (span > straight || length(to.point) > antipodeDistance / 3)) {"):
        "short edges nearer to home are as straight as their halves",
}
