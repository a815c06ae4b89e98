#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/host/console/Dialog.h"

namespace platform::host {

// A dialog told in lines on standard output. One line of standard input is one act: a button's caption or number, "?"
// for the tool tips where there are some, "x" to close, as the end of input does.
class LineView : public DialogView {
public:
    explicit LineView(Dialog dialog);

    Act Next() override;
    void Update(const Dialog& dialog) override { dialog_ = dialog; }

private:
    [[nodiscard]] std::optional<Act> ActOf(const std::u16string& line) const;
    void TellButtons(bool explained) const;
    void TellChoices() const;
    [[nodiscard]] bool HasToolTips() const;

    Dialog dialog_;
};

}  // namespace platform::host
