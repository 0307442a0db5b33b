// The layout of the binary set-up file, written once for each direction. Knows the record and the code page, no disk.
#include "document/SetupFile.h"

#include "text/Windows1252.h"

#include <bit>
#include <concepts>
#include <limits>
#include <string_view>
#include <type_traits>

namespace vantrel {

namespace {

constexpr std::uint16_t Dimensions = 1;
constexpr std::int32_t LowerBound = 0;

std::string AtOffset(std::size_t offset, const std::string& what) {
    return "The set-up file stops making sense at offset " + std::to_string(offset) + ": " + what + ".";
}

class Writer {
public:
    explicit Writer(std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}

    template <std::unsigned_integral Number> void Put(Number number) {
        for (std::size_t byte = 0; byte < sizeof(Number); ++byte) {
            bytes_.push_back(static_cast<std::uint8_t>(number >> (8 * byte)));
        }
    }

    void Put(const std::string& text) {
        const std::string encoded = Windows1252FromUtf8(text);
        if (encoded.size() > std::numeric_limits<std::uint16_t>::max()) {
            throw RuntimeError(ErrorNumber::Overflow, "A text of " + std::to_string(encoded.size()) +
                                                          " characters does not fit into a set-up file: \"" +
                                                          text.substr(0, 20) + "...\".");
        }
        Put(static_cast<std::uint16_t>(encoded.size()));
        bytes_.insert(bytes_.end(), encoded.begin(), encoded.end());
    }

    void Put(std::int32_t number) { Put(static_cast<std::uint32_t>(number)); }

    template <typename Element> void Put(const std::vector<Element>& array) {
        Put(Dimensions);
        Put(static_cast<std::uint32_t>(array.size()));
        Put(LowerBound);
        for (const Element& element : array)
            Put(element);
    }

private:
    std::vector<std::uint8_t>& bytes_;
};

class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    template <std::unsigned_integral Number> Number Take(std::string_view within) {
        Number number = 0;
        std::size_t byte = 0;
        for (const std::uint8_t value : TakeBytes(sizeof(Number), within)) {
            number = static_cast<Number>(number | static_cast<Number>(Number{value} << (8 * byte++)));
        }
        return number;
    }

    void Take(std::string& text, std::string_view within) {
        const auto bytes = TakeBytes(Take<std::uint16_t>(within), within);
        text = Utf8FromWindows1252(std::string(bytes.begin(), bytes.end()));
    }

    void Take(std::int32_t& number, std::string_view within) {
        number = static_cast<std::int32_t>(Take<std::uint32_t>(within));
    }

    template <typename Element> void Take(std::vector<Element>& array, std::string_view name) {
        constexpr bool isNumber = std::is_same_v<Element, std::int32_t>;
        array.resize(TakeArrayHeader(name, isNumber ? sizeof(std::int32_t) : sizeof(std::uint16_t)));
        for (Element& element : array)
            Take(element, name);
    }

private:
    std::span<const std::uint8_t> TakeBytes(std::size_t count, std::string_view within) {
        const auto left = bytes_.subspan(offset_);
        if (left.size() < count) {
            throw BadSetupFile(ErrorNumber::InputPastEndOfFile, offset_, "the file ends within " + std::string(within));
        }
        offset_ += count;
        return left.first(count);
    }

    /// The element count. `smallest` is how few bytes an element can have: more elements than there are bytes for are
    /// refused before anybody makes room for them.
    std::size_t TakeArrayHeader(std::string_view name, std::size_t smallest) {
        const std::size_t start = offset_;
        const auto dimensions = Take<std::uint16_t>(name);
        if (dimensions != Dimensions) Refuse(start, name, "dimensions", dimensions);

        const std::size_t countOffset = offset_;
        const auto count = static_cast<std::int32_t>(Take<std::uint32_t>(name));
        if (count < 0) Refuse(countOffset, name, "element count", count);

        const std::size_t boundOffset = offset_;
        const auto lowerBound = static_cast<std::int32_t>(Take<std::uint32_t>(name));
        if (lowerBound != LowerBound) Refuse(boundOffset, name, "lower bound", lowerBound);

        if (static_cast<std::size_t>(count) > (bytes_.size() - offset_) / smallest) {
            throw BadSetupFile(ErrorNumber::InputPastEndOfFile, countOffset,
                               "the file is too short for the " + std::to_string(count) + " elements of " +
                                   std::string(name));
        }
        return static_cast<std::size_t>(count);
    }

    [[noreturn]] static void Refuse(std::size_t offset, std::string_view array, const char* part, std::int32_t number) {
        throw BadSetupFile(ErrorNumber::BadFileFormat, offset,
                           "the header of " + std::string(array) + " gives " + std::to_string(number) + " as " + part);
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t offset_ = 0;
};

} // namespace

BadSetupFile::BadSetupFile(ErrorNumber number, std::size_t offset, const std::string& what)
    : RuntimeError(number, AtOffset(offset, what)), offset_(offset) {}

std::vector<std::uint8_t> SetupFileBytes(const Configuration& record) {
    std::vector<std::uint8_t> bytes;
    Writer writer(bytes);
    writer.Put(record.CreatorVersion);
    writer.Put(std::bit_cast<std::uint64_t>(record.SavedDate.days));
    writer.Put(record.TargetAddresses);
    writer.Put(record.Values);
    writer.Put(record.NodeDescriptions);
    writer.Put(record.AddressTypes);
    return bytes;
}

Configuration ParseSetupFile(std::span<const std::uint8_t> bytes) {
    Configuration record;
    Reader reader(bytes);
    reader.Take(record.CreatorVersion, "the program version");
    record.SavedDate.days = std::bit_cast<double>(reader.Take<std::uint64_t>("the date"));
    reader.Take(record.TargetAddresses, "the target addresses");
    reader.Take(record.Values, "the values");
    reader.Take(record.NodeDescriptions, "the node descriptions");
    reader.Take(record.AddressTypes, "the address types");
    return record;
}

} // namespace vantrel
