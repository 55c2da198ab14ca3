// The editor in its window: the world that the workbench asks.
// Layer: shell.
#pragma once
#include "editor/workbench.h"
#include "shell/formula_input.h"
#include "shell/main_window.h"
#include "shell/manual_window.h"
#include "shell/please_wait.h"
#include "shell/value_dialog.h"
#include "toolkit/clipboard_offer.h"

#include <map>
#include <memory>

namespace ostrand::shell {

/// Names of windows in the file of their places.
inline constexpr const char* editor_window = "editor";
inline constexpr const char* manual_window = "manual";

class Application : public editor::World {
  public:
    explicit Application (const editor::Preferences& preferences, editor::BenchOptions options);
    ~Application () override;

    editor::Workbench& bench () { return bench_; }
    MainWindow& window () { return *window_; }
    /// Makes the window for what the workbench has; nothing is shown yet.
    void build ();

    // What the workbench asks.
    void redraw (editor::Canvas& canvas) override;
    void show_pointer (editor::PointerShape shape) override;
    void refresh () override;
    void refresh_status (const std::string& text) override;
    void show_mouse_help (const editor::MouseHelpSlots* slots, int row) override;
    void alert (const std::string& text) override;
    bool yes_no (const std::string& question, const std::string& hint,
                 const std::string& tail) override;
    std::vector<std::string> ask_files (const editor::FileQuestion& question) override;
    void ask_value (const editor::ValueQuestion& question,
                    std::function<void (const std::string&)> taken) override;
    void search (const editor::SearchQuestion& question) override;
    editor::RecoveryAnswer ask_recovery (const std::vector<editor::RecoveryItem>& items) override;
    std::optional<int> popup (const std::vector<editor::PopupEntry>& entries) override;
    std::optional<unsigned> choose_colour (const std::string& title, unsigned rgb) override;
    void wait_for (const std::string& text, BackgroundWork& work) override;
    void fill_formula_dialog (
        const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
        std::function<void (const std::string& formula, const std::string& output)> entered)
        override;
    void show_formula_dialog () override;
    void show_about () override;
    void show_manual () override;
    void save_manual (const std::string& path) override;
    void copy (editor::ClipboardContent content) override;
    void request_paste (editor::Canvas& canvas) override;
    double now () const override;
    editor::TimerId call_later (double seconds, std::function<void ()> what) override;
    void cancel (editor::TimerId timer) override;
    void end () override;

  private:
    struct Timer;
    static void timer_due (void* data);
    static void refresh_due (void* data);
    bool uses_line () const;
    std::vector<std::string> ask_native (const editor::FileQuestion& question);
    bool may_overwrite (const std::string& path);
    manual::Manual& user_manual ();

    std::unique_ptr<MainWindow> window_;
    editor::Workbench bench_;
    std::unique_ptr<Dialog> value_dialog_;
    std::unique_ptr<Dialog> search_dialog_;
    std::unique_ptr<PleaseWait> please_wait_;
    std::unique_ptr<FormulaInput> formula_dialog_;
    std::unique_ptr<ManualWindow> manual_window_;
    std::unique_ptr<manual::Manual> manual_;
    toolkit::ClipboardOffer clipboard_;
    std::map<editor::TimerId, std::unique_ptr<Timer>> timers_;
    editor::TimerId last_timer_ = 0;
    bool refresh_pending_ = false;
};

} // namespace ostrand::shell
