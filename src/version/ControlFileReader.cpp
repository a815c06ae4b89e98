#include "version/ControlFileReader.h"

#include "common/modStringLibrary.h"

bool ControlFileReader::NextLine() {
    do {
        if (file_.AtEnd()) {
            return false;
        }
        line_ = Trim(file_.ReadLine());
        ++number_;
    } while (line_.empty());
    isHead_ = MidFixed(line_, 1, 1) == u"[";
    if (isHead_) {
        section_ = MidFixed(line_, 2, static_cast<std::int16_t>(static_cast<int>(line_.size()) - 2));
    }
    return true;
}
