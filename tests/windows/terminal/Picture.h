// A PNG file, decoded, and what a test wants to know of it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Picture {
    int width = 0;  // 0: the file is no picture
    int height = 0;
    std::vector<std::uint32_t> pixels;  // 0xAARRGGBB, from the top row down

    // Pixels of exactly this colour, as a share of all; 0 to 1.
    double shareOf(std::uint32_t rgb) const;
    std::size_t distinctColours() const;
};

Picture readPicture(const std::string& path);
