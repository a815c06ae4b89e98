#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/host/console/Dialog.h"

namespace platform::host {

// A dialog printed as lines on standard output. Each line of standard input is one action: a button's caption or
// number,
// "?" for the tool tips if there are any, or "x" to close the dialog. The end of input closes it too.
class LineView : public DialogView {
public:
    explicit LineView(Dialog dialog);

    UserAction Next() override;
    void Update(const Dialog& dialog) override { dialog_ = dialog; }

private:
    [[nodiscard]] std::optional<UserAction> ActionFor(const std::u16string& line) const;
    void PrintButtons(bool withToolTips) const;
    void PrintChoices() const;
    [[nodiscard]] bool HasToolTips() const;

    Dialog dialog_;
};

}  // namespace platform::host
