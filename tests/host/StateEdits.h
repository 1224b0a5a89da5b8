#pragma once

// What the hosted state tests change in an instance beyond its knobs, as
// edits of its state text: modes, routing and a pattern. A host cannot reach
// these but through the state, so the tests give each instance an edited
// state first. Plain C++, for the lilv program as for the JUCE one.

#include <string>
#include <utility>
#include <vector>

namespace StateEdits
{
inline const std::vector<std::pair<std::string, std::string>>& edits()
{
    static const std::vector<std::pair<std::string, std::string>> list = {
        { "<HostMode state=\"off\"/>", "<HostMode state=\"on\"/>" },
        { "<NoteOff state=\"off\"/>", "<NoteOff state=\"on\"/>" },
        { "<SD out=\"1\"/>", "<SD out=\"3\"/>" },
        { "<TriggerOut state=\"off\" instrument=\"BD\"/>", "<TriggerOut state=\"on\" instrument=\"CP\"/>" },
        // The first host pattern, played by key 12: a kick on every eighth.
        { "<BD>O.......o.o.....</BD>", "<BD>O.O.O.O.O.O.O.O.</BD>" },
    };
    return list;
}

// Applies every edit once; false if one of them found nothing to change.
inline bool apply(std::string& stateText)
{
    for (const auto& [from, to] : edits())
    {
        const auto at = stateText.find(from);
        if (at == std::string::npos)
            return false;
        stateText.replace(at, from.size(), to);
    }
    return true;
}
} // namespace StateEdits
