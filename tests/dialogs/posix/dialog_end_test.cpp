// What a dialog holds of the system goes with it.

#include <brcore8/dialogs/dlg.h>

#include <memory>

#include "dialogs/answer.h"
#include "dialogs/template.h"

namespace {

using DialogEnds = OwnedDialogs;

TEST_F(DialogEnds, ItsFontGoesWithIt) {
    const Template bytes(true);
    for (const bool byWrapper : {false, true}) {
        SCOPED_TRACE(byWrapper);
        auto dialog = std::make_unique<SDlg>(bytes.bytes.data(), bytes.bytes.size());
        ASSERT_EQ(dialog->CreateModeless(&owner), 1);
        const auto font = reinterpret_cast<HFONT>(dialog->SendMessage(WM_GETFONT));
        LOGFONTA record{};
        ASSERT_NE(::GetObjectA(font, sizeof record, &record), 0);
        if (byWrapper)
            dialog.reset();
        else
            dialog->DestroyWindow();
        EXPECT_EQ(::GetObjectA(font, sizeof record, &record), 0);
    }
}

}  // namespace
