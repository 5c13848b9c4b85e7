// Many pictures on one: a heading for each control, below it its states from left to right as far as there is room.
#pragma once

#include "quor/platform/proving/WindowCapture.h"

#include <cstdint>

namespace gallery {

WindowPicture emptyPicture(int width, int height, std::uint32_t ground);
// Pixels outside the target are dropped.
void paste(WindowPicture& target, const WindowPicture& picture, int left, int top);

class Sheet {
public:
    Sheet(int width, int gap, std::uint32_t ground);

    void addHeading(const WindowPicture& text);
    void add(const WindowPicture& caption, const WindowPicture& picture);
    WindowPicture finished() const;

private:
    void beginRow(int gap);
    void put(const WindowPicture& picture, int left, int top);

    const int m_gap;
    const std::uint32_t m_ground;
    WindowPicture m_picture;  // grows downward
    int m_left;
    int m_top;
};

}  // namespace gallery
