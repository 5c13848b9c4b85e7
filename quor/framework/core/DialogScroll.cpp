#include "quor/framework/core/DialogScroll.h"

#include <algorithm>

namespace quor::framework {

namespace {

constexpr int kLeastStep = 5;
constexpr int kLinesOfRange = 20;
constexpr int kPagesOfRange = 10;

// A bar takes room from the other direction, which may then need one as well.
void chooseBars(CSize content, const ScrollMetrics& metrics, ScrollPlan& plan) {
    if (content.cy > metrics.workArea.cy) {
        plan.vertical = true;
        plan.window.cx += metrics.barWidth;
        plan.horizontal = plan.window.cx > metrics.workArea.cx;
    } else if (content.cx > metrics.workArea.cx) {
        plan.horizontal = true;
        plan.window.cy += metrics.barHeight;
        plan.vertical = plan.window.cy > metrics.workArea.cy;
    }
}

}  // namespace

ScrollPlan planScrollBars(CSize content, CSize window, const ScrollMetrics& metrics) {
    ScrollPlan plan;
    plan.window = window;
    chooseBars(content, metrics, plan);
    if (plan.horizontal) plan.window.cx = metrics.workArea.cx;
    if (plan.vertical) plan.window.cy = metrics.workArea.cy;
    plan.visible = metrics.workArea;
    plan.page = metrics.workArea;
    if (plan.horizontal && plan.vertical) plan.page = plan.page - CSize(metrics.barWidth, metrics.barHeight);
    return plan;
}

int scrollRange(const ScrollAxis& axis) { return axis.content - axis.visible + 1 + axis.otherBar; }

int scrollTarget(const ScrollAxis& axis, ScrollCommand command, int thumb) {
    const int range = scrollRange(axis);
    const int line = std::max(kLeastStep, range / kLinesOfRange);
    const int page = std::max(kLeastStep, range / kPagesOfRange);
    const auto back = [&](int step) {
        return axis.position < 1 ? axis.position : axis.position - std::min(step, axis.position);
    };
    const auto forward = [&](int step) {
        return axis.position >= range ? axis.position : axis.position + std::min(step, range - axis.position);
    };
    switch (command) {
        case ScrollCommand::lineBack:
            return back(line);
        case ScrollCommand::lineForward:
            return forward(line);
        case ScrollCommand::pageBack:
            return back(page);
        case ScrollCommand::pageForward:
            return forward(page);
        case ScrollCommand::thumb:
            break;
    }
    return std::clamp(thumb, 0, std::max(range, 0));
}

}  // namespace quor::framework
