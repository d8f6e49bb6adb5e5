#include "workbench/Documents.h"

#include "framework/base/exceptions.h"
#include "framework/base/files.h"
#include "framework/base/text.h"
#include "framework/ui/application.h"

namespace workbench {

using namespace framework;
using namespace hosting;

TDocuments::~TDocuments() {
    for (TDocumentForm* document : Open_)
        document->Free();
}

void TDocuments::ForgetClosed() {
    std::erase_if(Open_, [](TDocumentForm* document) {
        if (document->Visible())
            return false;
        document->Free();
        return true;
    });
}

TDocumentForm* TDocuments::Find(const std::string& path) const {
    for (TDocumentForm* document : Open_)
        if (SameText(document->Path(), path))
            return document;
    return nullptr;
}

TDocumentForm& TDocuments::Keep(TDocumentForm& document) {
    Open_.push_back(&document);
    document.OnSaved = [this](const std::string& path) {
        if (OnSaved)
            OnSaved(path);
    };
    return document;
}

void TDocuments::Open(const std::string& path) {
    ForgetClosed();
    TDocumentForm* document = Find(path);
    if (!document)
        document = &Keep(Application().CreateForm<TDocumentForm>(path));
    document->Reload();
    document->Show();
    ::SetForegroundWindow(document->Handle());
}

void TDocuments::OpenNew(const std::string& caption, const std::string& text,
                         const std::string& folder) {
    ForgetClosed();
    Keep(Application().CreateForm<TDocumentForm>(caption, text, folder)).Show();
}

void TDocuments::Moved(const std::string& from, const std::string& to) {
    // Saving must not bring the old one back.
    if (TDocumentForm* const document = Find(from))
        document->MovedTo(to);
}

std::string TDocuments::Reload() {
    ForgetClosed();
    std::string failed;
    for (TDocumentForm* document : Open_) {
        try {
            document->Reload();
        } catch (const Exception& error) {
            // Another program holds the file, or it has grown too large.
            failed += std::string(error.what()) + "\r\n";
        }
    }
    return failed;
}

bool TDocuments::Save() {
    ForgetClosed();
    for (TDocumentForm* document : Open_)
        if (!document->AskToSave())
            return false;
    return true;
}

bool TDocuments::Close() {
    ForgetClosed();
    for (TDocumentForm* document : Open_) {
        document->Close();
        if (document->Visible())
            return false;
    }
    return true;
}

std::vector<TUnsavedText> TDocuments::Unsaved() const {
    std::vector<TUnsavedText> texts;
    for (const TDocumentForm* document : Open_)
        if (document->Modified())
            texts.push_back(document->Unsaved());
    return texts;
}

}  // namespace workbench
