// The fuzz bodies over their corpus, and over some mutants of each text: what can be had without a fuzzing compiler. A
// body that finds a fault ends the process and says which text.
#include "tests/fuzz/Fuzz.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>

namespace {

std::string mutant(std::string text, std::mt19937& random) {
    for (unsigned edits = 1 + random() % 4; edits > 0; --edits) {
        const std::size_t at = random() % (text.size() + 1);
        switch (random() % 3) {
            case 0:
                text.insert(at, 1, static_cast<char>(random()));
                break;
            case 1:
                text.insert(at, text.substr(random() % (text.size() + 1), 1 + random() % 8));
                break;
            default:
                text.erase(at, 1 + random() % 2);
                break;
        }
    }
    return text;
}

void runFolder(const char* folder, void (*body)(const std::uint8_t*, std::size_t)) {
    constexpr int kMutants = 500;
    std::mt19937 random(20251121);
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(QUOR_CORPUS) / folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        for (int i = 0; i <= kMutants; ++i) {
            const std::string tried = i ? mutant(text, random) : text;
            body(reinterpret_cast<const std::uint8_t*>(tried.data()), tried.size());
        }
        ++files;
    }
    EXPECT_GT(files, 0);
}

TEST(FuzzCorpus, Expression) { runFolder("expression", fuzzExpression); }
TEST(FuzzCorpus, ColumnProfile) { runFolder("column_profile", fuzzColumnProfile); }
TEST(FuzzCorpus, Exchange) { runFolder("exchange", fuzzExchange); }
TEST(FuzzCorpus, Factory) { runFolder("factory", fuzzFactory); }
TEST(FuzzCorpus, DealSlip) { runFolder("deal_slip", fuzzDealSlip); }
TEST(FuzzCorpus, Appearance) { runFolder("appearance", fuzzAppearance); }
TEST(FuzzCorpus, Filter) { runFolder("filter", fuzzFilter); }
TEST(FuzzCorpus, SortTexts) { runFolder("sort_texts", fuzzSortTexts); }
TEST(FuzzCorpus, Settings) { runFolder("settings", fuzzSettings); }
TEST(FuzzCorpus, WatchProfile) { runFolder("watch_profile", fuzzWatchProfile); }
TEST(FuzzCorpus, WatchUserColumns) { runFolder("watch_user_columns", fuzzWatchUserColumns); }
TEST(FuzzCorpus, WatchExport) { runFolder("watch_export", fuzzWatchExport); }

}  // namespace
