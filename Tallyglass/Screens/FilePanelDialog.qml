import QtQuick
import QtQuick.Dialogs
import Qt.labs.folderlistmodel // Qt's own dialog needs it, and would crash without
import Tallyglass

// The desktop's dialog for one panel. Declining answers with no files.
Item {
    id: dialog
    required property filePanel panel
    signal answered(var urls)
    signal failed(string reason)

    FileDialog {
        id: files
        title: dialog.panel.message
        fileMode: dialog.panel.asksToSave ? FileDialog.SaveFile : FileDialog.OpenFiles
        onAccepted: dialog.answered(dialog.panel.asksToSave ? [selectedFile] : selectedFiles)
        onRejected: dialog.answered([])
    }
    FolderDialog {
        id: folder
        title: dialog.panel.message
        onAccepted: dialog.answered([selectedFolder])
        onRejected: dialog.answered([])
    }

    function open() {
        const shown = panel.asksForFolder ? folder : files;
        if (panel.asksToSave)
            files.selectedFile = panel.suggestion;
        shown.open();
        if (!shown.visible)
            failed(qsTr("The dialog for choosing files can't be opened. A part of Qt that it needs may be missing; "
                        + "the program's log says which."));
    }
}
