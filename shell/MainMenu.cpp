#include "shell/MainMenu.h"

#include "runtime/Funktionen32/Texts.h"
#include "shell/ids.h"

namespace tarv {
namespace {

constexpr const wchar_t* separator = nullptr;
constexpr bool hidden = false;

constexpr MenuEntry mnuFile[] = {
    {ID_mnuFileExit, L"Beenden"},
};

constexpr MenuEntry mnuSupport[] = {
    {ID_mnuInfo, L"Infocenter"},
    {ID_mnuSupportSep1, separator, hidden},
    {ID_mnuSupportIPAdresse, L"Lokale IP-Adresse anzeigen", hidden},
    {ID_mnuSupportSep2, separator, hidden},
    {ID_mnuSupportDienst, L"Computerdienste verwalten"},
    {ID_mnuSupportSep3, separator},
    {ID_mnuSupportView, L"Fernwartung"},
};

constexpr MenuColumn menuBar[] = {
    {L"Datei", mnuFile},
    {L"Support", mnuSupport},
};

} // namespace

std::span<const MenuColumn> mainMenuDefinition() {
    return menuBar;
}

Menu createMainMenu() {
    Menu bar(CreateMenu());
    for (const MenuColumn& column : menuBar) {
        Menu popup(CreatePopupMenu());
        for (const MenuEntry& entry : column.entries) {
            if (entry.visible) {
                AppendMenuW(popup.get(), entry.caption ? MF_STRING : MF_SEPARATOR,
                            static_cast<UINT_PTR>(entry.id),
                            entry.caption ? TranslateText(entry.caption).c_str() : nullptr);
            }
        }
        // The bar owns its popups from here on.
        AppendMenuW(bar.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(popup.release()),
                    TranslateText(column.caption).c_str());
    }
    return bar;
}

} // namespace tarv
