#include "host/gallery/Sheet.h"

#include <algorithm>

namespace gallery {

WindowPicture emptyPicture(int width, int height, std::uint32_t ground) {
    WindowPicture picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), ground);
    return picture;
}

void paste(WindowPicture& target, const WindowPicture& picture, int left, int top) {
    for (int y = std::max(0, -top); y < picture.height && top + y < target.height; ++y)
        for (int x = std::max(0, -left); x < picture.width && left + x < target.width; ++x)
            target.pixels[static_cast<std::size_t>(top + y) * static_cast<std::size_t>(target.width) +
                          static_cast<std::size_t>(left + x)] =
                picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                               static_cast<std::size_t>(x)];
}

Sheet::Sheet(int width, int gap, std::uint32_t ground)
    : m_gap(gap), m_ground(ground), m_picture(emptyPicture(width, 0, ground)), m_left(gap), m_top(gap) {}

// Below everything there is.
void Sheet::beginRow(int gap) {
    m_left = m_gap;
    m_top = m_picture.height + gap;
}

void Sheet::put(const WindowPicture& picture, int left, int top) {
    m_picture.height = std::max(m_picture.height, top + picture.height);
    m_picture.pixels.resize(static_cast<std::size_t>(m_picture.width) * static_cast<std::size_t>(m_picture.height),
                            m_ground);
    paste(m_picture, picture, left, top);
}

void Sheet::addHeading(const WindowPicture& text) {
    beginRow(2 * m_gap);
    put(text, m_left, m_top);
    beginRow(m_gap / 2);
}

void Sheet::add(const WindowPicture& caption, const WindowPicture& picture) {
    const int width = std::max(caption.width, picture.width);
    if (m_left > m_gap && m_left + width + m_gap > m_picture.width) beginRow(m_gap);
    put(caption, m_left, m_top);
    put(picture, m_left, m_top + caption.height + m_gap / 4);
    m_left += width + m_gap;
}

WindowPicture Sheet::finished() const {
    WindowPicture sheet = emptyPicture(m_picture.width, m_picture.height + m_gap, m_ground);
    paste(sheet, m_picture, 0, 0);
    return sheet;
}

}  // namespace gallery
