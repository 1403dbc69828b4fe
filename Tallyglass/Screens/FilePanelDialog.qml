import QtQuick
import QtQuick.Dialogs
import Tallyglass

// The desktop's dialog for one panel, open from the start. Declining answers with no files.
Item {
    id: dialog
    required property filePanel panel
    signal answered(var urls)

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
    Component.onCompleted: {
        if (panel.asksToSave)
            files.selectedFile = panel.suggestion;
        (panel.asksForFolder ? folder : files).open();
    }
}
