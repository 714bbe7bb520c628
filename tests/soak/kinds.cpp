#include "kind.h"

namespace quillon::soak {

using namespace Qt::StringLiterals;

const std::vector<Kind> &kinds()
{
    static const std::vector<Kind> all {
        {u"kills"_s, u"the program, killed at any moment of any command, and started again"_s, u"kills"_s,
            killsRound},
        {u"program"_s,
            u"the program, killed at its first start, at a later one, and while it logs a receiver"_s,
            u"kills"_s, programRound},
        {u"disk"_s, u"everything that writes, with room for 0, 1, 2 ... bytes"_s, u"bytes"_s, diskRound},
        {u"saves"_s, u"what windows save, with room for 0, 1, 2 ... bytes"_s, u"bytes"_s, savesRound},
        {u"pages"_s, u"the same two on a real disk in memory, with 0, 1, 2 ... pages left"_s, u"pages"_s,
            pagesRound, u"no disk may be mounted"_s},
        {u"calls"_s, u"each command with its 1st, 2nd, 3rd ... call of the system failing"_s, u"calls"_s,
            callsRound},
        {u"folder"_s, u"another program swaps the log, and two programs are on one folder"_s, u"swaps"_s,
            folderRound},
        {u"input"_s, u"junk for every reader"_s, u"inputs"_s, inputRound},
        {u"fuzz"_s, u"the fuzzers, where the preset fuzz is built"_s, u"inputs"_s, fuzzRound,
            u"the preset fuzz is not built"_s},
        {u"long"_s, u"all commands in turn for an evening without an end"_s, u"commands"_s, longRound},
    };
    return all;
}

} // namespace quillon::soak
