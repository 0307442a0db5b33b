#include "views/WordRecorder.h"

#include "text/DelimitedText.h"
#include "text/Padding.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

using namespace std::chrono;

std::string Digits(std::int64_t number, std::size_t width) { return PadLeft(std::to_string(number), width, '0'); }

/// "2026-03-14 09:05:07".
std::string DateAndTime(local_seconds at) {
    const auto day = floor<days>(at);
    const year_month_day date(day);
    const hh_mm_ss time(at - day);
    return Digits(static_cast<int>(date.year()), 4) + "-" + Digits(static_cast<unsigned>(date.month()), 2) + "-" +
           Digits(static_cast<unsigned>(date.day()), 2) + " " + Digits(time.hours().count(), 2) + ":" +
           Digits(time.minutes().count(), 2) + ":" + Digits(time.seconds().count(), 2);
}

/// "12.345".
std::string SecondsText(MonotonicTime time) {
    constexpr std::int64_t thousand = 1000;
    const std::int64_t count = duration_cast<milliseconds>(time).count();
    return std::to_string(count / thousand) + "." + Digits(count % thousand, 3);
}

} // namespace

std::string RecordedWordName(const RecordedWord& word) {
    const bool sent = word.place.column == DataDirection::Send;
    return (sent ? "Send " : "Receive ") + std::to_string(word.place.row) + ", sequence " +
           std::to_string(word.sequence);
}

void WordRecorder::Follow(std::size_t slot, std::optional<RecordedWord> word) {
    if (slots_.at(slot).word != word) slots_[slot] = {word, {}};
}

void WordRecorder::Take(const RecordedWord& word, std::optional<std::uint16_t> value, MonotonicTime now) {
    for (Slot& slot : slots_) {
        if (slot.word != word) continue;
        Samples& samples = slot.samples;
        samples.push_back({now, value});
        while (samples.size() > MostReadings)
            samples.pop_front();
    }
}

std::vector<WordRecorder::Point> WordRecorder::Points(std::size_t slot, WordNotation notation,
                                                      MonotonicTime since) const {
    const Samples& samples = slots_.at(slot).samples;
    auto sample = std::ranges::lower_bound(samples, since, {}, &Sample::at);
    if (sample != samples.begin()) --sample;
    std::vector<Point> points;
    for (auto before = samples.end(); sample != samples.end(); before = sample++) {
        if (!sample->word) continue;
        const bool joined = before != samples.end() && before->word && sample->at - before->at <= LongestStep;
        const double value =
            notation == WordNotation::Signed ? static_cast<std::int16_t>(*sample->word) : *sample->word;
        points.push_back({duration<double>(sample->at - begun_).count(), value, joined});
    }
    return points;
}

void WordRecorder::Clear() {
    for (Slot& slot : slots_)
        slot.samples.clear();
}

bool WordRecorder::IsEmpty() const {
    return std::ranges::all_of(slots_, [](const Slot& slot) { return slot.samples.empty(); });
}

std::string WordRecorder::Csv(WordNotation notation) const {
    std::vector<std::string> heading{"Time", "Seconds"};
    struct Row {
        MonotonicTime at;
        std::size_t column;
        std::string text;
    };
    // For whoever calculates with them; below 0 as the picture beside it.
    const WordNotation written = notation == WordNotation::Signed ? notation : WordNotation::Decimal;
    std::vector<Row> rows;
    for (const Slot& slot : slots_) {
        if (!slot.word) continue;
        const std::size_t column = heading.size();
        heading.push_back(RecordedWordName(*slot.word));
        for (const Sample& sample : slot.samples)
            rows.push_back({sample.at, column, sample.word ? WordText(*sample.word, written) : "-"});
    }
    std::ranges::stable_sort(rows, {}, &Row::at);
    std::string table = "\xEF\xBB\xBF" + DelimitedLine(heading, ',');
    for (Row& row : rows) {
        const MonotonicTime since = row.at - begun_;
        std::vector<std::string> cells(heading.size());
        cells[0] = DateAndTime(begunLocal_ + duration_cast<seconds>(since));
        cells[1] = SecondsText(since);
        cells[row.column] = std::move(row.text);
        table += DelimitedLine(cells, ',');
    }
    return table;
}

} // namespace vantrel
