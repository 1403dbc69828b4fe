import QtQuick
import QtQuick.Controls // qmllint disable unused-imports
import QtQuick.Dialogs
import QtQuick.Window
import Qt.labs.folderlistmodel // qmllint disable unused-imports
import Tallyglass.Context

// The desktop's dialog for one panel. Cancelling answers with no files. Some of the imports aren't used here, but by
// Qt's own dialog, which crashes without them; importing them turns that into an error that names what is missing.
Item {
    id: dialog
    required property filePanel panel
    signal answered(var urls)
    signal failed(string reason)

    FileDialog {
        id: files
        title: dialog.panel.message
        fileMode: dialog.panel.asksToSave ? FileDialog.SaveFile : FileDialog.OpenFiles
        acceptLabel: dialog.panel.asksToSave ? qsTr("Save") : qsTr("Open")
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
        const chosen = panel.asksForFolder ? folder : files;
        if (panel.asksToSave)
            files.selectedFile = panel.suggestion;
        chosen.open();
        if (!chosen.visible)
            failed(qsTr("Qt can't make the dialog. A part of Qt that it needs may be missing."));
    }
}
