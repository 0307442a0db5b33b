// Paper as plain text: the report's layout on pages of characters. Writes nothing itself.
#pragma once

#include "platform/Printer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// A page is 80 columns of a tenth of an inch by 66 lines of a sixth; a font is as good as any other.
class TextPrinter final : public Printer {
public:
    [[nodiscard]] double PageWidth() const override;
    [[nodiscard]] double PageHeight() const override;
    [[nodiscard]] int PageNumber() const override { return page_; }
    void SetFont(const PrinterFont& /*font*/) override {}
    [[nodiscard]] double TextHeight(std::string_view text) const override;
    [[nodiscard]] double TextWidth(std::string_view text) const override;
    void EndDocument() override;

    /// The ended document: form feeds between its pages, no blanks at the ends of its lines. Control characters that
    /// were printed are "?".
    [[nodiscard]] const std::string& Document() const { return document_; }

private:
    void Draw(std::string_view text, double x, double y) override;
    void BeginPage() override;
    void EndPage();

    /// A line is a cell, the bytes of one character, a column.
    std::vector<std::vector<std::string>> lines_;
    std::string document_;
    int page_ = 1;
};

} // namespace vantrel
