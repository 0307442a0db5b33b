// The four steps of a write-through.
#include "document/WriteThrough.h"

#include "link/TargetMap.h"
#include "text/NumberText.h"

namespace vantrel {

std::optional<std::int32_t> WriteThrough(RSComm& link, const std::string& address, std::int32_t value) {
    if (!link.LinkFailed()) link.RSWrite(WriteThroughFlag, "1");
    if (!link.LinkFailed()) link.RSWrite(address, std::to_string(value));
    if (!link.LinkFailed()) link.RSWrite(WriteThroughFlag, "0");
    if (link.LinkFailed()) return std::nullopt;
    const std::string text = link.RSRead(address);
    // No later echo would show that the answers were out of step.
    if (link.LinkFailed() || link.ReadFailed() || link.SurplusFollows()) return std::nullopt;
    return LeadingInteger(text);
}

} // namespace vantrel
