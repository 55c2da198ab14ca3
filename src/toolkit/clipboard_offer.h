// Content of the clipboard in several forms at once, which are made when someone asks for them.
// Layer: toolkit.
#pragma once
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ostrand::toolkit {

/// One form of what is copied.
struct ClipboardForm {
    std::string type; // "image/png"
    /// The bytes; empty when they cannot be made, which refuses this form only.
    std::function<std::string ()> make;
};

/// Holds the clipboard of the display until something else is copied, here or elsewhere. The
/// toolkit's own clipboard takes plain text and bitmaps only; this one answers the display's
/// requests itself. Where there is no X server nothing can be offered.
class ClipboardOffer {
  public:
    ClipboardOffer ();
    ~ClipboardOffer ();
    ClipboardOffer (const ClipboardOffer&) = delete;
    ClipboardOffer& operator= (const ClipboardOffer&) = delete;

    /// Offers a text, as plain text of every name that programs know, and further forms of it.
    /// False when the clipboard cannot be had: the text is to be copied by the toolkit then.
    bool offer (std::string text, std::vector<ClipboardForm> forms);
    /// The text that is offered now, null when none is.
    const std::string* text () const;
    /// Nothing is offered from now on.
    void withdraw ();

  private:
    struct Holder;
    std::unique_ptr<Holder> holder_;
};

} // namespace ostrand::toolkit
