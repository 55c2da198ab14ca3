// Requests for the clipboard, as X programs make them: the conventions for talk between clients
// (ICCCM, section 2).
#include "toolkit/clipboard_offer.h"

#include <FL/Fl.H>
#include <FL/platform.H>
#include <algorithm>
#ifdef FLTK_USE_X11
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#endif

namespace ostrand::toolkit {

#ifdef FLTK_USE_X11

namespace {

/// What is longer goes to other programs in parts of this length.
constexpr std::size_t part_length = std::size_t{256} * 1024;

constexpr const char* text_types[] = {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain",
                                      "TEXT", "STRING"};

/// The other program may be gone: its window's errors are no fault of ours.
class QuietErrors {
  public:
    explicit QuietErrors (Display* display) : display_ (display) {
        XSync (display_, False);
        before_ = XSetErrorHandler ([] (Display*, XErrorEvent*) { return 0; });
    }
    ~QuietErrors () {
        XSync (display_, False);
        XSetErrorHandler (before_);
    }
    QuietErrors (const QuietErrors&) = delete;
    QuietErrors& operator= (const QuietErrors&) = delete;

  private:
    Display* display_;
    XErrorHandler before_;
};

} // namespace

struct ClipboardOffer::Holder {
    /// Bytes that go to another program in parts; a part for each time that it deletes the one
    /// before.
    struct Transfer {
        Window requestor;
        Atom property;
        Atom type;
        std::string bytes;
        std::size_t sent = 0;
    };

    Display* const display = fl_x11_display ();
    Window window = 0;
    Time since = 0;
    bool held = false;
    std::string text;
    std::vector<ClipboardForm> forms;
    std::vector<Transfer> transfers;

    Atom atom (const std::string& name) const {
        return XInternAtom (display, name.c_str (), False);
    }
    Atom clipboard () const { return atom ("CLIPBOARD"); }

    Holder () {
        if (display == nullptr) return;
        window =
            XCreateSimpleWindow (display, DefaultRootWindow (display), -10, -10, 1, 1, 0, 0, 0);
        Fl::add_system_handler (event_came, this);
    }
    ~Holder () {
        if (display == nullptr) return;
        Fl::remove_system_handler (event_came);
        XDestroyWindow (display, window);
        XFlush (display);
    }
    Holder (const Holder&) = delete;
    Holder& operator= (const Holder&) = delete;

    bool take () {
        since = fl_event_time;
        XSetSelectionOwner (display, clipboard (), window, since);
        held = XGetSelectionOwner (display, clipboard ()) == window;
        return held;
    }

    void forget () {
        held = false;
        text.clear ();
        forms.clear ();
    }

    static int event_came (void* event, void* data) {
        return static_cast<Holder*> (data)->handle (*static_cast<XEvent*> (event)) ? 1 : 0;
    }

    bool handle (const XEvent& event) {
        if (event.type == SelectionRequest && event.xselectionrequest.owner == window) {
            answer (event.xselectionrequest);
            return true;
        }
        if (event.type == SelectionClear && event.xselectionclear.window == window) {
            // It may have been taken back since.
            if (XGetSelectionOwner (display, clipboard ()) != window) forget ();
            return true;
        }
        if (event.type == PropertyNotify && event.xproperty.state == PropertyDelete)
            return send_part (event.xproperty.window, event.xproperty.atom);
        return false;
    }

    void answer (const XSelectionRequestEvent& request) {
        const QuietErrors quiet (display);
        // Old programs name no property: the type's own name stands for it.
        const Atom property = request.property == None ? request.target : request.property;
        XEvent reply{};
        reply.xselection.type = SelectionNotify;
        reply.xselection.display = display;
        reply.xselection.requestor = request.requestor;
        reply.xselection.selection = request.selection;
        reply.xselection.target = request.target;
        reply.xselection.time = request.time;
        reply.xselection.property =
            held && put (request.requestor, property, request.target) ? property : None;
        XSendEvent (display, request.requestor, False, NoEventMask, &reply);
    }

    /// Writes what was asked for into a property of the other's window.
    bool put (Window requestor, Atom property, Atom target) {
        const auto put_numbers = [&] (Atom type, const std::vector<long>& numbers) {
            XChangeProperty (display, requestor, property, type, 32, PropModeReplace,
                             reinterpret_cast<const unsigned char*> (numbers.data ()),
                             static_cast<int> (numbers.size ()));
            return true;
        };
        if (target == atom ("TARGETS")) return put_numbers (XA_ATOM, types ());
        if (target == atom ("TIMESTAMP"))
            return put_numbers (XA_INTEGER, {static_cast<long> (since)});
        for (const char* const type : text_types)
            if (target == atom (type))
                // "TEXT" leaves the choice to who answers.
                return put_bytes (requestor, property,
                                  type == std::string ("TEXT") ? atom ("UTF8_STRING") : target,
                                  text);
        for (const ClipboardForm& form : forms)
            if (target == atom (form.type))
                return put_bytes (requestor, property, target, form.make ());
        return false;
    }

    std::vector<long> types () const {
        std::vector<long> types;
        const auto add = [&] (const std::string& name) {
            types.push_back (static_cast<long> (atom (name)));
        };
        add ("TARGETS");
        add ("TIMESTAMP");
        for (const char* const type : text_types) add (type);
        for (const ClipboardForm& form : forms) add (form.type);
        return types;
    }

    bool put_bytes (Window requestor, Atom property, Atom type, std::string bytes) {
        if (bytes.empty ()) return false;
        // The toolkit reads its own requests in a loop that answers none.
        const bool own = fl_find (requestor) != nullptr;
        if (bytes.size () <= part_length || own) {
            change (requestor, property, type, bytes);
            return true;
        }
        std::erase_if (transfers, [&] (const Transfer& one) {
            return one.requestor == requestor && one.property == property;
        });
        XSelectInput (display, requestor, PropertyChangeMask);
        const long length = static_cast<long> (bytes.size ());
        XChangeProperty (display, requestor, property, atom ("INCR"), 32, PropModeReplace,
                         reinterpret_cast<const unsigned char*> (&length), 1);
        transfers.push_back ({requestor, property, type, std::move (bytes)});
        return true;
    }

    void change (Window requestor, Atom property, Atom type, std::string_view bytes) const {
        XChangeProperty (display, requestor, property, type, 8, PropModeReplace,
                         reinterpret_cast<const unsigned char*> (bytes.data ()),
                         static_cast<int> (bytes.size ()));
    }

    bool send_part (Window requestor, Atom property) {
        const auto transfer = std::ranges::find_if (transfers, [&] (const Transfer& one) {
            return one.requestor == requestor && one.property == property;
        });
        if (transfer == transfers.end ()) return false;
        const QuietErrors quiet (display);
        const std::size_t length = std::min (part_length, transfer->bytes.size () - transfer->sent);
        change (requestor, property, transfer->type,
                std::string_view (transfer->bytes).substr (transfer->sent, length));
        transfer->sent += length;
        if (length > 0) return true;
        // An empty part was the end.
        XSelectInput (display, requestor, NoEventMask);
        transfers.erase (transfer);
        return true;
    }
};

ClipboardOffer::ClipboardOffer () = default;
ClipboardOffer::~ClipboardOffer () = default;

bool ClipboardOffer::offer (std::string text, std::vector<ClipboardForm> forms) {
    if (!holder_) holder_ = std::make_unique<Holder> ();
    if (holder_->display == nullptr || !holder_->take ()) return false;
    holder_->text = std::move (text);
    holder_->forms = std::move (forms);
    return true;
}

const std::string* ClipboardOffer::text () const {
    return holder_ && holder_->held ? &holder_->text : nullptr;
}

void ClipboardOffer::withdraw () {
    if (holder_) holder_->forget ();
}

#else

struct ClipboardOffer::Holder {};

ClipboardOffer::ClipboardOffer () = default;
ClipboardOffer::~ClipboardOffer () = default;

bool ClipboardOffer::offer (std::string, std::vector<ClipboardForm>) { return false; }

const std::string* ClipboardOffer::text () const { return nullptr; }

void ClipboardOffer::withdraw () {}

#endif

} // namespace ostrand::toolkit
