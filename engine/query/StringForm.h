#pragma once

#include <string_view>

#include "engine/core/VelaValue.h"

namespace vela {

// StringForm is the text of a value as comparisons take it (what GetSaveString gives), without a
// copy where the value holds that text itself. Must not outlive the value, nor a change of it.
class StringForm {
public:
    explicit StringForm(const VelaValue& value);
    StringForm(const StringForm&) = delete;
    StringForm& operator=(const StringForm&) = delete;

    [[nodiscard]] std::string_view View() const { return mView; }

private:
    string mMade;   // empty when the value's own text serves
    std::string_view mView;
};

}   // namespace vela
