#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "framework/ui/form.h"

namespace support {

/// Answers modal forms in the place of a user, in the order in which they are expected. What is
/// expected while a form is being driven comes before what was expected already.
class TExpectedForms {
public:
    using TDrive = std::function<void(framework::TForm&)>;

    /// From now on the application's modal forms come here.
    void Install();

    /// The next modal form is to have this caption; `drive` is called with it when it is open and
    /// then has to end it, at once or by messages it posts. What it raises leaves the form's
    /// ShowModal.
    void Expect(const std::string& caption, TDrive drive);
    /// The captions of forms that never came; they are expected no more.
    std::vector<std::string> TakeMissing();

    /// A form that nobody expected, by its caption. It is cancelled.
    std::function<void(const std::string& caption)> OnUnexpected;

private:
    struct TForm {
        std::string Caption;
        TDrive Drive;
    };

    void ModalBegins(framework::TForm& form);

    std::deque<TForm> Forms_;
};

}  // namespace support
