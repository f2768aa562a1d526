// The scanner that flex makes of bench/scan.l, with the same tokens as SScanner's.
#ifndef BRCORE8_BENCH_SCAN_FLEX_H
#define BRCORE8_BENCH_SCAN_FLEX_H

#include <cstddef>
#include <string>
#include <string_view>

// What a scan found: contestants that found another number of tokens, or of bytes in them, did not
// do the same work.
struct ScanResult {
    std::size_t keywords = 0;
    std::size_t runs = 0;
    std::size_t bytes = 0;
    bool operator==(const ScanResult&) const = default;
};

constexpr std::string_view kScanDelimiters = "()[]+-*/%^={}\"'";

// The tokens as texts of their own: a run is joined of its words and trimmed.
class ScanCounter {
public:
    void Word(std::string_view word) { run_ += word; }
    void Keyword(std::string_view word) {
        EndRun();
        token_ = word;
        ++result_.keywords;
        result_.bytes += token_.size();
    }
    ScanResult Result() {
        EndRun();
        return result_;
    }

private:
    void EndRun() {
        const std::size_t first = run_.find_first_not_of(kScanDelimiters);
        if (first != run_.npos) {
            token_ = run_.substr(first, run_.find_last_not_of(kScanDelimiters) - first + 1);
            ++result_.runs;
            result_.bytes += token_.size();
        }
        run_.clear();
    }

    std::string run_;
    std::string token_;
    ScanResult result_;
};

ScanResult FlexScan(std::string_view text);

#endif
