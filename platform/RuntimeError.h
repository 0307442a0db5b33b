// The one exception type for unexpected run-time errors. Toolkit-free; every room may throw it.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace vantrel {

/// The classic run-time error numbers that this program raises.
enum class ErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    FileNotFound = 53,
    DiskFull = 61,
    InputPastEndOfFile = 62,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    BadFileFormat = 321,
    PrinterError = 482,
};

/// An unexpected run-time error: a number, a one-line description for the user, and the source it came from.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(ErrorNumber number, const std::string& description, std::string source = "VANTREL")
        : std::runtime_error(description), number_(number), source_(std::move(source)) {}

    [[nodiscard]] int Number() const { return static_cast<int>(number_); }
    [[nodiscard]] const std::string& Source() const { return source_; }
    [[nodiscard]] std::string Description() const { return what(); }

private:
    ErrorNumber number_;
    std::string source_;
};

} // namespace vantrel
