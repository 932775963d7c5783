#pragma once

#include <krcore/foundation/Export.h>

namespace KrCore {

class Error;
class String;

/// What the library asks its host. The host derives from this, implements what it can and installs
/// one instance for the process. The answers given here mean "not handled": the library then helps
/// itself.
///
/// Any thread of the library may ask. No library lock is held during a call.
class KR_API Callbacks {
public:
    Callbacks() noexcept = default;
    virtual ~Callbacks();

    /// The installed instance, borrowed; null when there is none.
    static Callbacks* get();
    /// Installs `callbacks`, borrowed until another one or null is installed.
    static void set(Callbacks* callbacks);

    /// Puts the locale to localize for ("de_DE") into `locale`. False: the system's locale is used.
    virtual bool getLocale(String& locale) const;

    /// Puts the host's name, as the user knows it, into `name`, for dialog titles and the like.
    virtual bool getApplicationName(String& name) const;

    /// Stores the window that dialogs stand before (an `HWND`). False: `KrGetTopWindow` decides.
    virtual bool getMainWindow(void*& window) const;

    /// Stores whether a dialog may be shown at this moment. False: `InitTerm::isUIEnabled` decides.
    virtual bool mayShowDialogs(bool& allowed) const;

    /// Told around a modal dialog, `begins` first true, then false, so that the host can disable
    /// its own windows. False: nobody cares.
    virtual bool modalDialog(bool begins);

    /// Reports an error that nobody caught. False: it is dropped.
    virtual bool reportError(const Error& error);

    /// Shows a line of text that a script wrote to its console. False: it is dropped.
    virtual bool writeLine(const String& text);

    /// Called now and then in long operations, to keep a host responsive. Stores true in `cancel`
    /// to stop the operation. False: it goes on.
    virtual bool idle(bool& cancel);

private:
    Callbacks(const Callbacks&) = delete;
    Callbacks& operator=(const Callbacks&) = delete;
};

} // namespace KrCore
