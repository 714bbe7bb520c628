// A Content-Type, a line feed, and a body of any bytes: the body is read whole, also after bytes that are no
// character, and what names no charset is read in the code page.

#include "require.h"

#include "net/answertext.h"

#include <QList>

#include <array>
#include <cstdint>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// In these a line feed never belongs to the character before it.
constexpr std::array charsets {"utf-8", "us-ascii", "iso-8859-1", "iso-8859-2", "iso-8859-7", "iso-8859-15",
    "koi8-r", "koi8-u", "windows-1250", "windows-1252", "windows-1255", "windows-1258", "shift_jis", "euc-jp",
    "gbk", "gb18030", "big5", "euc-kr", "ibm850", "tis-620"};

void check(QByteArrayView type, QByteArrayView body)
{
    static const CodePage page(1252);
    // No charset makes more than this of a byte.
    constexpr qsizetype most = 8;
    const QString text = answerText(body, type, page);
    require(text.isValidUtf16());
    require(text.size() <= most * (body.size() + 1));
    require(answerText(body, type.toByteArray().toUpper(), page) == text);
    if (!type.toByteArray().toLower().contains("charset")) {
        require(text == page.decode(body));
    }
}

void checkNothingIsLostAfter(const char *charset, QByteArrayView body)
{
    const CodePage page(1252);
    const QByteArray type = QByteArray("text/plain; charset=") + charset;
    const QByteArray more = body.toByteArray() + "\n87.6;D3C1;z";
    require(answerText(more, type, page).endsWith(u"\n87.6;D3C1;z"_s));
    const QByteArray quotedType = QByteArray("text/plain;Charset = \"") + charset + "\" ";
    require(answerText(body, quotedType, page) == answerText(body, type, page));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const qsizetype end = bytes.indexOf('\n');
    const QByteArrayView type = end < 0 ? QByteArrayView() : bytes.first(end);
    const QByteArrayView body = bytes.sliced(end + 1);
    check(type, body);
    // The first byte of the body chooses one of those that are known to be read.
    if (!body.isEmpty()) {
        checkNothingIsLostAfter(charsets.at(static_cast<std::uint8_t>(body.front()) % charsets.size()), body);
    }
    return 0;
}
