// What the gallery shows: one line a picture, a control in a state.
#pragma once

#include "quor/platform/Framework.h"

#include <functional>
#include <memory>
#include <vector>

namespace gallery {

// Where an exhibit stands: a window to put controls into, and what must live as long as the picture is taken.
struct Stage {
    CWnd& window;
    std::vector<std::shared_ptr<void>> kept;
    HWND popup = nullptr;  // a window of its own that belongs into the picture, such as an open list

    // A control that lives as long as the stage.
    template <class Control>
    Control& add() {
        auto control = std::make_shared<Control>();
        kept.push_back(control);
        return *control;
    }
    // The place for a control, from the stage's upper left corner, in lengths of a plain screen.
    CRect place(int left, int top, int width, int height) const;
};

struct Exhibit {
    const char* control;
    const char* state;
    std::function<void(Stage&)> show;
    bool modal = false;  // a dialog that returns when it is cancelled; its picture is taken while it stands
};

// A new control adds its lines here.
std::vector<Exhibit> exhibits();

}  // namespace gallery
