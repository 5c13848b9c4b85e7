// The colour of a row by keywords: 100 of 8 letters, none of which the text of 40 letters holds; the host's callback is
// part of the time. A keyword that it holds must then give its colour.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kKeywordCount = 100;
constexpr int kKeywordLength = 8;
constexpr int kTextLength = 40;
constexpr int kTextCount = 256;
constexpr int kCalls = 20'000;
constexpr int kRepeats = 9;
constexpr COLORREF kUntouched = RGB(1, 2, 3), kHit = RGB(4, 5, 6);

std::vector<std::string> g_texts;

std::string letters(workload::Random& random, int length, char first) {
    std::string text;
    for (int i = 0; i < length; ++i) text += static_cast<char>(first + random.below(26));
    return text;
}

// The data of a row is its number.
int textOf(DWORD_PTR data, int, CString& text, COLORREF&, COLORREF&, int&) {
    text = g_texts[data % kTextCount].c_str();
    return 1;
}

}  // namespace

void benchKeywords(Figures& figures) {
    workload::Random random(workload::operationSeed);
    g_texts.clear();
    for (int i = 0; i < kTextCount; ++i) g_texts.push_back(letters(random, kTextLength, 'a'));
    WorkloadWindow window(false);
    const std::unique_ptr<WorkloadGrid> grid = window.makeGrid();
    grid->InitColumnTextRtn(textOf);
    CStringArray keywords;
    CArray<DWORD, DWORD> colors;
    for (int i = 0; i < kKeywordCount; ++i) {
        keywords.Add(letters(random, kKeywordLength, 'A').c_str());
        colors.Add(kHit);
    }
    grid->SetDefaultAttributes(1, &keywords, &colors);
    COLORREF color = kUntouched;
    std::vector<double> times;
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
        const double start = microseconds();
        for (DWORD_PTR row = 1; row <= kCalls; ++row) grid->GetTextColorForItem(row, color, 0, 0);
        times.push_back((microseconds() - start) / kCalls);
        check(color == kUntouched, "a keyword was found where there is none");
    }
    CString last = g_texts[7].substr(kTextLength - kKeywordLength).c_str();
    grid->m_Appearance.pKeywords->SetAt(kKeywordCount - 1, last.MakeUpper());
    grid->GetTextColorForItem(7, color, 0, 0);
    check(color == kHit, "the last keyword was not found");
    grid->DestroyWindow();
    char note[64];
    std::snprintf(note, sizeof note, "%d keywords, none in %d texts, callback included", kKeywordCount, kTextCount);
    figures.push_back({"keyword_row_us", median(times), "us", note, 8, 2});
}
