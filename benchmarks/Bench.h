// What the benchmarks share: one figure each, with the limit it must keep and the goal worth claiming.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

struct Figure {
    std::string key;  // of the JSON output
    double value = 0;
    std::string unit;  // ns, us, ms, B/row
    std::string note;
    double must = 0;  // an upper limit; 0: none
    double goal = 0;

    bool missed() const { return must > 0 && value > must; }
};

using Figures = std::vector<Figure>;

// Each measures its figures in turn and throws std::runtime_error when a result that it timed is wrong.
void benchBricks(Figures& figures);
void benchGrid(Figures& figures);
void benchFlip(Figures& figures);
void benchGridFlip(Figures& figures);
void benchGridSort(Figures& figures);
void benchFilter(Figures& figures);
void benchFilterPick(Figures& figures);
void benchFit(Figures& figures);
void benchFontCombo(Figures& figures);
void benchExpression(Figures& figures);
void benchCustomColumn(Figures& figures);
void benchSettings(Figures& figures);
void benchWatch(Figures& figures);
void benchBlack76(Figures& figures);
void benchListSort(Figures& figures);
void benchDialog(Figures& figures);
void benchTrend(Figures& figures);
void benchKeywords(Figures& figures);
void benchTabs(Figures& figures);
