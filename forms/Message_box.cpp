#include "forms/Message_box.h"

#include <algorithm>

#include "core/Resources.h"
#include "framework/ui/images.h"
#include "framework/ui/labels.h"

namespace tandrel {

namespace {

/// Takes lines off the top of the label until it is no higher than that. The end is what counts:
/// there stands the question, or the result.
void LimitHeight(framework::TLabel& label, int height) {
    std::string text = label.Text();
    while (label.Height() > height) {
        const std::size_t end = text.find('\n');
        if (end == std::string::npos)
            return;
        text.erase(0, end + 1);
        label.SetText("...\r\n" + text);
    }
}

}  // namespace

SIZE AddPictureAndText(framework::TForm& box, const std::wstring& bitmap, const std::string& text) {
    using L = TMessageBoxLayout;
    auto& picture = box.Make<framework::TImage>("Image1", box);
    picture.LoadResource(ResourceModule(), bitmap);
    const int size = box.Scale(L::Picture);
    const int top = box.Scale(L::Margin);
    picture.SetBounds(box.Scale(L::Margin), top, size, size);
    // A text that is wider than the screen goes on in the next line.
    const RECT screen = framework::TForm::WorkArea();
    const int room = screen.right - screen.left - box.Scale(2 * L::RoomBesideText);
    auto& label = box.Make<framework::TLabel>("Label1", box, text, room);
    LimitHeight(label, (screen.bottom - screen.top) / 2);
    const int height = std::max(size, label.Height());
    label.SetBounds(box.Scale(L::TextLeft), top + (height - label.Height()) / 2, label.Width(),
                    label.Height());
    // The sizes are those of the whole box.
    const int frame = box.Width() - static_cast<int>(box.ClientSize().cx);
    return {std::max(box.Scale(L::Width), label.Width() + box.Scale(L::RoomBesideText)) - frame,
            top + height};
}

}  // namespace tandrel
