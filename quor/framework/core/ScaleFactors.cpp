#include "quor/framework/core/ScaleFactors.h"

namespace quor::framework {

namespace {

constexpr int kLetters = 26;  // of which each occurs twice
constexpr double kLetterWidth = 6.0;
constexpr double kDialogFontHeight = 13.0;
constexpr double kTrebuchetFontHeight = 16.0;

}  // namespace

int fontKind(const CString& face, int otherwise) {
    if (face == "MS Shell Dlg 2") return kDialogFontKind;
    return face == "Trebuchet MS" ? kTrebuchetFontKind : otherwise;
}

void scaleFactors(int kind, int alphabetWidth, int fontHeight, double& x, double& y) {
    if (kind != kDialogFontKind && kind != kTrebuchetFontKind) return;
    const int letter = (alphabetWidth / kLetters + 1) / 2;
    x = letter / kLetterWidth;
    y = fontHeight / (kind == kDialogFontKind ? kDialogFontHeight : kTrebuchetFontHeight);
}

}  // namespace quor::framework
