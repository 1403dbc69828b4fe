import QtQuick
import Tallyglass

// Makes what another file describes when it is first to be shown, though not before the window's first frame, and
// drops it when it isn't shown any more. Since the file stands here by name only, its types aren't loaded before.
Loader {
    id: later
    required property string file
    /// Gives the properties of what is shown, by name. They follow what it reads.
    property var inputs: () => ({})
    property bool shown: true
    readonly property bool wanted: shown && Startup.over
    readonly property var given: wanted ? inputs() : null
    property bool ready: false

    visible: shown
    onStatusChanged: if (status === Loader.Error) Startup.fail(Qt.createComponent(file).errorString())
    onWantedChanged: make()
    onGivenChanged: {
        if (!item || !given)
            return;
        for (const name in given)
            item[name] = given[name];
    }
    Component.onCompleted: {
        ready = true;
        make();
    }

    function make() {
        if (!ready)
            return;
        if (!wanted)
            source = "";
        else if (!item)
            setSource(file, inputs());
    }
}
