#include "installcheck/frmVCoreTest.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "common/Error.h"
#include "installcheck/VcoreTest.h"
#include "platform/Regional.h"
#include "platform/ScopeExit.h"
#include "platform/WindowSystem.h"

namespace {

// Indexes of the labels: the report panel, its heading, and the clipboard hint.
enum Label : std::size_t { Label1, Label3, Label2 };

// All lengths in twips.
constexpr platform::Rectangle Label1Bounds{240, 480, 8055, 3135};
constexpr platform::Rectangle Label3Bounds{240, 120, 5415, 375};
constexpr platform::Rectangle Label2Bounds{240, 3840, 8055, 255};

// Minimum size of the window, including its frame.
constexpr platform::Size MinimumSize{8730, 5280};

// Space around the panel: frame and margin on the right, the hint line at the bottom.
constexpr std::int32_t RightOfLabel1 = 420;
constexpr std::int32_t BelowLabel1 = 1000;
constexpr std::int32_t GapToLabel2 = 120;

struct Colours {
    platform::Colour background;
    platform::Colour text;
};
constexpr Colours PassedColours{0x00FF00, 0x000000};  // black on green
constexpr Colours FailedColours{0x0000FF, 0xFFFFFF};  // white on red

platform::WindowDesign Design() {
    constexpr std::int32_t icon = 2;
    constexpr bool bold = true;
    return {u"Vandrel Core Elements V1",
            {8610, 4305},
            true,
            icon,
            {{platform::ControlKind::Label, u"Label1", Label1Bounds},
             {platform::ControlKind::Label, u"Information", Label3Bounds, bold},
             {platform::ControlKind::Label, u"Label2", Label2Bounds, bold}},
            {u"MS Sans Serif", 165}};  // 8.25 points
}

}  // namespace

frmVCoreTest::frmVCoreTest() : window_(platform::WindowCreate(Design(), {{}, {}, [this] { Form_Resize(); }})) {
    if (window_ == 0) {
        Raise(RuntimeError::OutOfMemory);
    }
}

frmVCoreTest::~frmVCoreTest() {
    platform::WindowDestroy(window_);
}

void frmVCoreTest::ShowModal() {
    Form_Load();
    Form_Resize();
    platform::WindowShowModal(window_);
}

void frmVCoreTest::Form_Load() {
    platform::ControlCaption(window_, Label2,
                             u"Obiger Text wurde in die Zwisachenablage kopiert und kann weiterverwendet werden!");
    platform::ControlVisible(window_, Label2, false);
    RunCheck();
}

// Setting the size triggers another resize event, possibly before WindowOuterSize returns.
void frmVCoreTest::Form_Resize() {
    if (resizing_) {
        return;
    }
    platform::Size size = platform::WindowOuterSize(window_);
    if (size.width < MinimumSize.width || size.height < MinimumSize.height) {
        resizing_ = true;
        const platform::ScopeExit resized([this] { resizing_ = false; });
        platform::WindowOuterSize(window_,
                                  {std::max(size.width, MinimumSize.width), std::max(size.height, MinimumSize.height)});
        size = platform::WindowOuterSize(window_);
    }
    platform::Rectangle panel = Label1Bounds;
    panel.width = size.width - panel.left - RightOfLabel1;
    panel.height = size.height - panel.top - BelowLabel1;
    platform::Rectangle hint = Label2Bounds;
    hint.top = panel.top + panel.height + GapToLabel2;
    platform::ControlBounds(window_, Label1, panel);
    platform::ControlBounds(window_, Label2, hint);
}

void frmVCoreTest::RunCheck() {
    VcoreTest check;
    const Colours colours = check.Ok() ? PassedColours : FailedColours;
    platform::ControlColours(window_, Label1, colours.background, colours.text);
    ReportShow(check.Text());
}

// Shows the hint only if the clipboard accepted the text.
void frmVCoreTest::ReportShow(const Text& text) {
    platform::ControlCaption(window_, Label1, text);
    platform::ClipboardClear();
    if (platform::ClipboardSet(platform::AnsiFromText(text), platform::ClipboardText)) {
        platform::ControlVisible(window_, Label2, true);
    }
}
