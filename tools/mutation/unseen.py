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
}
