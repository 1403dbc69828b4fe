import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Window
import Qt.labs.folderlistmodel
import Tallyglass.Context

// The desktop's dialog for one panel. Declining answers with no files. Qt's own dialog can't be made without what is
// imported here besides, or crashes; since it is imported, the error names what is missing.
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
            failed(qsTr("Qt can't make the dialog. A part of Qt that it needs may be missing."));
    }
}
