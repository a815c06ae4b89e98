#include "installcheck/frmVCoreTest.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "common/Error.h"
#include "installcheck/VcoreTest.h"
#include "platform/Regional.h"
#include "platform/WindowSystem.h"

namespace {

// The labels by their place in the design: the panel of the report, its heading, and the hint on the clipboard.
enum Label : std::size_t { Label1, Label3, Label2 };

// All lengths in twips.
constexpr platform::Rectangle Label1Place{240, 480, 8055, 3135};
constexpr platform::Rectangle Label3Place{240, 120, 5415, 375};
constexpr platform::Rectangle Label2Place{240, 3840, 8055, 255};

// The window is never smaller, measured over its frame.
constexpr platform::Size LeastSize{8730, 5280};

// What the panel leaves free: frame and margin at its right, and below it room for the hint.
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
            {{platform::ControlKind::Label, u"Label1", Label1Place},
             {platform::ControlKind::Label, u"Information", Label3Place, bold},
             {platform::ControlKind::Label, u"Label2", Label2Place, bold}},
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

// Setting the size tells of a new size in turn, perhaps before it returns.
void frmVCoreTest::Form_Resize() {
    if (resizing_) {
        return;
    }
    platform::Size size = platform::WindowOuterSize(window_);
    if (size.width < LeastSize.width || size.height < LeastSize.height) {
        resizing_ = true;
        platform::WindowOuterSize(window_,
                                  {std::max(size.width, LeastSize.width), std::max(size.height, LeastSize.height)});
        resizing_ = false;
        size = platform::WindowOuterSize(window_);
    }
    platform::Rectangle panel = Label1Place;
    panel.width = size.width - panel.left - RightOfLabel1;
    panel.height = size.height - panel.top - BelowLabel1;
    platform::Rectangle hint = Label2Place;
    hint.top = panel.top + panel.height + GapToLabel2;
    platform::ControlPlace(window_, Label1, panel);
    platform::ControlPlace(window_, Label2, hint);
}

void frmVCoreTest::RunCheck() {
    VcoreTest check;
    const Colours colours = check.Ok() ? PassedColours : FailedColours;
    platform::ControlColours(window_, Label1, colours.background, colours.text);
    ReportShow(check.Text());
}

// A clipboard that refuses the text changes nothing else.
void frmVCoreTest::ReportShow(const Text& text) {
    platform::ControlCaption(window_, Label1, text);
    platform::ClipboardClear();
    platform::ClipboardSet(platform::AnsiFromText(text), platform::ClipboardText);
    platform::ControlVisible(window_, Label2, true);
}
