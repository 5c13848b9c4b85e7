// How much larger a dialog's font is than the one that its places were made for.
#pragma once

#include "quor/platform/Base.h"

namespace quor::framework {

// Kinds of fonts with a known size; all others are not scaled.
inline constexpr int kDialogFontKind = 1;     // "MS Shell Dlg 2"
inline constexpr int kTrebuchetFontKind = 2;  // "Trebuchet MS"

// The text whose width tells the average letter: each letter of the alphabet, small and capital.
inline constexpr char kAlphabet[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

// The kind of a face by its name; `otherwise` for any other.
int fontKind(const CString& face, int otherwise);

// Sets x and y from the width of kAlphabet and the height of the font. An unknown kind leaves both.
void scaleFactors(int kind, int alphabetWidth, int fontHeight, double& x, double& y);

}  // namespace quor::framework
