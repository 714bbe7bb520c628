"""Changes that nobody could notice, and why. Each stands for the line as it was and as it became."""

UNSEEN = {
    ("app/main.cpp", 'QApplication::setDesktopFileName(u"quillon"_s); QApplication::setWindowIcon(programIcon());',
     'QApplication::setWindowIcon(programIcon()); QApplication::setDesktopFileName(u"quillon"_s);'): "neither needs the other",
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
    ("live/rdsreader.cpp", "m_end = 0;", "m_end = 1;"): "characters come in pairs: an end of one never tells a text",
    ("live/ui/receiverdock.cpp", "m_receiver.known().add(station.hertz, station.pi); m_receiver.setLogged(station);",
     "m_receiver.setLogged(station); m_receiver.known().add(station.hertz, station.pi);"): "neither needs the other",
    ("stats/ui/logstats.cpp", "FX_ResetMSChart(*ui->MSChart1); AddLegend(*ui->MSChart1, false);",
     "AddLegend(*ui->MSChart1, false); FX_ResetMSChart(*ui->MSChart1);"): "both set different things",
    ("stats/ui/logstats.cpp", "AddLegend(*ui->MSChart1, legendTgl); ui->MSChart1->setTable(table);",
     "ui->MSChart1->setTable(table); AddLegend(*ui->MSChart1, legendTgl);"): "the legend is settled before the chart is painted",
    ("stats/ui/rosechart.cpp", "painter.drawText(square.bottomRight() + QPointF(6, -2), mapModeName(m_modes[i]));",
     "painter.drawText(square.bottomRight() + QPointF(6, -3), mapModeName(m_modes[i]));"): "a pixel of a word's place",
    ("geo/ui/maplegend.cpp", "box.setVisible(count > 0); m_isEmpty = m_isEmpty && count == 0;",
     "m_isEmpty = m_isEmpty && count == 0; box.setVisible(count > 0);"): "neither needs the other",
    ("geo/ui/mapmufpanel.cpp", "const QRectF bar(left + 1, bottom - height, step - 2, height);",
     "const QRectF bar(left + 1, bottom - height, step - 3, height);"): "a bar is a pixel narrower",
    ("geo/ui/mapmufpanel.cpp", "painter.drawRoundedRect(place, 4, 4);", "painter.drawRoundedRect(place, 5, 4);"):
        "how round a corner is",
    ("geo/ui/mapdock.cpp",
     "connect(m_map, &MapView::siteChosen, this, &MapDock::siteChosen); connect(m_map, &MapView::setupWanted, this, &MapDock::setupWanted);",
     "connect(m_map, &MapView::setupWanted, this, &MapDock::setupWanted); connect(m_map, &MapView::siteChosen, this, &MapDock::siteChosen);"):
        "connections of different signals",
    ("ui/filterbar.cpp", "m_ui->filterText->setText(texts.text); choose(*m_ui->filterMode, texts.mode);",
     "choose(*m_ui->filterMode, texts.mode); m_ui->filterText->setText(texts.text);"): "nothing is read before all are set",
    ("ui/scrolledpage.cpp", "constexpr int fewRows = 6;", "constexpr int fewRows = 7;"): "a matter of taste: how low a page may become",
    ("ui/problemwatch.cpp", "constexpr qreal width = 2;", "constexpr qreal width = 3;"): "a matter of taste: how thick a frame is",
    ("import/ui/importfile.cpp",
     "connect(ui->importLeaveOut, &QPushButton::clicked, this, [this] { actOnChosen(ImportAction::LeaveOut); }); "
     "connect(ui->importTable, &ImportTable::tickPressed, this, [this] { turnTicks(); });",
     "connect(ui->importTable, &ImportTable::tickPressed, this, [this] { turnTicks(); }); "
     "connect(ui->importLeaveOut, &QPushButton::clicked, this, [this] { actOnChosen(ImportAction::LeaveOut); });"):
        "connections of different signals",
    ("import/ui/importfile.cpp",
     "connect(ui->importTable, &ImportTable::tickPressed, this, [this] { turnTicks(); }); "
     "connect(m_model, &ImportModel::chosen, this, [this] { showCounts(); });",
     "connect(m_model, &ImportModel::chosen, this, [this] { showCounts(); }); "
     "connect(ui->importTable, &ImportTable::tickPressed, this, [this] { turnTicks(); });"): "connections of different signals",
    ("backup/ui/filebackups.cpp", "if (!m_listed.empty()) {", "if (true) {"): "an empty list has no line to choose",
}
