#include "host/panes/DarkFields.h"

#include "host/panes/Theme.h"
#include "host/panes/WindowWatch.h"

#include <memory>
#include <uxtheme.h>

namespace terminal {

void darkenFields(HWND parent) {
    struct Brushes {
        CBrush field{palette::kBackground}, strip{palette::kSurface};
    };
    const auto brushes = std::make_shared<Brushes>();
    watchWindow(parent, [brushes](const WindowMessage& message, const PassOn& passOn) -> LRESULT {
        const bool isStrip = message.message == WM_CTLCOLORSTATIC;
        if (!isStrip && message.message != WM_CTLCOLOREDIT && message.message != WM_CTLCOLORLISTBOX) return passOn();
        const auto dc = reinterpret_cast<HDC>(message.wParam);
        ::SetTextColor(dc, isStrip ? palette::kDim : palette::kText);
        ::SetBkColor(dc, isStrip ? palette::kSurface : palette::kBackground);
        return reinterpret_cast<LRESULT>((isStrip ? brushes->strip : brushes->field).GetSafeHandle());
    });
}

void darkenCombo(HWND combo) { ::SetWindowTheme(combo, L"DarkMode_CFD", nullptr); }

}  // namespace terminal
