#include "engine/query/StringForm.h"

namespace vela {

StringForm::StringForm(const VelaValue& value)
{
    if (IsTextBacked(value.GetType()) && !value.IsNull()) {
        mView = value.TextView();
        return;
    }
    mMade = value.GetSaveString();
    mView = mMade.View();
}

}   // namespace vela
