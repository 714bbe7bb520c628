#pragma once

#include "import/importrow.h"
#include "platform/codepage.h"

#include <QString>
#include <QStringView>

namespace quillon {

/// What makes an entry what the log takes, whichever file it is from.
///
/// Texts become what the code page has of them. Refused are: "|", which separates the fields of the log; the
/// letters "CRLF", which become a line break there; the PI code "delete"; a line break outside Notes.
/// Returns why, or nothing. `own` takes an entry as it is: without PI code and name, too.
[[nodiscard]] QString makeStorable(ImportRow &row, const CodePage &codePage, bool own);

/// The RDS name of a station's name: its first eight characters, "_" for blanks; none at its ends.
[[nodiscard]] QString importedRdsName(QStringView name);

} // namespace quillon
