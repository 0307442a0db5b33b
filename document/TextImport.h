// Import of the older text format (".vtl"): text to record. Knows the record and the classic item syntax, no disk.
#pragma once

#include "document/Configuration.h"
#include "platform/RuntimeError.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrel {

/// A text import file that cannot be taken over. The description names line and item, both from 1.
class BadImportFile : public RuntimeError {
public:
    BadImportFile(ErrorNumber number, std::size_t line, std::size_t item, const std::string& what);
    [[nodiscard]] std::size_t Line() const { return line_; }
    [[nodiscard]] std::size_t ItemInLine() const { return item_; }

private:
    std::size_t line_;
    std::size_t item_;
};

/// `defaults` with everything that the text says stored over it. `bytes` is UTF-8 or Windows-1252; a description is
/// stored as one that was entered. Throws BadImportFile (9 more than 31 sequence blocks, an end mark alone not counted;
/// 6 a number that no value can hold; 321 a line break inside an item, a type letter other than W or H).
[[nodiscard]] Configuration ImportText(std::string_view bytes, const Configuration& defaults);

} // namespace vantrel
