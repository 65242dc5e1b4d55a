#include "examples.h"

#include "runtime/cls_PathDialog.h"

// The shell's dialog for choosing a folder.
void folderDialog(tarv::Runtime& rt) {
    tarv::cls_PathDialog dialog(rt);
    dialog.sTitel(L"Ordner für die Sicherung");
    dialog.hHande(0); // the desktop; a program with a window gives its own

    // Would show the dialog and wait for the user:
    // dialog.StartPathDialog();
    // if (!dialog.bCancel()) backUpTo(dialog.sDriveDir());

    print(L"sDriveDir before a choice: " + dialog.sDriveDir());
    print(L"bCancel before a choice: " + yesNo(dialog.bCancel()));
}
