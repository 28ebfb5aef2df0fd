#include "windows/dialogs/frmTextInput.h"

#include "resources/controls.h"

void frmTextInput::OnOk() {
    text_ = Dialog::Text(tbDir);
    Close(true);
}
