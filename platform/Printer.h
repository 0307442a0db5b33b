// What the program asks of its host about paper: text in a font at a position, page by page. Realised by the host's
// printer and a PDF file, by plain text pages on the console, and by the tests.
#pragma once

#include <string>
#include <string_view>

namespace vantrel {

struct PrinterFont {
    std::string name; ///< The typeface, "Times"; a host without it takes its nearest.
    double points = 12;
    bool bold = false;
    bool underlined = false;
};

/// One print job, at work on its first page from the start. All lengths are inches; positions count from the upper left
/// corner of the paper, and a text hangs down from its position. Texts are UTF-8, one line each.
/// A printer that is destroyed before EndDocument has printed nothing.
class Printer {
public:
    Printer() = default;
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    virtual ~Printer() = default;

    /// The paper, whatever part of it the host can print on.
    [[nodiscard]] virtual double PageWidth() const = 0;
    [[nodiscard]] virtual double PageHeight() const = 0;
    /// Counts from 1.
    [[nodiscard]] virtual int PageNumber() const = 0;

    /// For everything from here on; measuring included.
    virtual void SetFont(const PrinterFont& font) = 0;
    /// The advance from one line to the next.
    [[nodiscard]] virtual double TextHeight(std::string_view text) const = 0;
    [[nodiscard]] virtual double TextWidth(std::string_view text) const = 0;

    [[nodiscard]] double CurrentX() const { return x_; }
    [[nodiscard]] double CurrentY() const { return y_; }
    void MoveTo(double x, double y) {
        x_ = x;
        y_ = y;
    }
    /// Prints at the current position and leaves it behind the text, on the same line.
    void Print(std::string_view text) {
        Draw(text, x_, y_);
        x_ += TextWidth(text);
    }

    /// Goes on at the upper left corner of the next page, in the same font. May throw RuntimeError 482.
    void NewPage() {
        BeginPage();
        MoveTo(0, 0);
    }
    /// Hands the job over; nothing may be printed afterwards. Throws RuntimeError: 482 for a printer; 61, 70, 75 or 76
    /// for a file that cannot be written, and then no part of it is there.
    virtual void EndDocument() = 0;

private:
    virtual void Draw(std::string_view text, double x, double y) = 0;
    virtual void BeginPage() = 0;

    double x_ = 0;
    double y_ = 0;
};

} // namespace vantrel
