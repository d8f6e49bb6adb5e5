#include "forms/FolderStep.h"

namespace tandrel {

using namespace framework;

void TFolderStep::AddFolder(TFormRows& rows, const std::string& label) {
    Edit3_ = rows.Field<TEdit>("Edit3", label, TFormRows::DotsWidth + 4);
    auto& dots = rows.Beside("Button1", "...", TFormRows::DotsWidth);
    auto& timer = MakeDelay(*this, "Timer1", 500, [this] { CheckFolder(); });
    Edit3_->OnChange = [&timer](TObject*) { timer.Restart(); };
    dots.OnClick = [this](TObject*) {
        if (AskForDirectory(*Edit3_))
            CheckFolder();
    };
}

void TFolderStep::LoadFormData() {
    ShowButtons(false);
    Edit3_->SetText(LoadedFolder());
    CheckFolder();
}

}  // namespace tandrel
