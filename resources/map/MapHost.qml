// The map window's content: one web view showing the map page. The window's
// C++ side (mapHost) decides navigation, loads and runs the scripts.
import QtQuick
import QtWebEngine

Item {
    function run(script) {
        web.runJavaScript(script)
    }

    function evaluate(id, script) {
        web.runJavaScript(script, function (result) { mapHost.scriptResult(id, result) })
    }

    WebEngineView {
        id: web
        objectName: "mapWeb"
        anchors.fill: parent
        profile: mapProfile
        backgroundColor: "#d5d8dc"
        // The page lives in the viewer's resources and fetches tiles from the
        // web: from the tile server only, and never a local file.
        settings.localContentCanAccessRemoteUrls: true
        settings.localContentCanAccessFileUrls: false
        settings.javascriptCanOpenWindows: false

        onNavigationRequested: function (request) {
            const linkClicked
                = request.navigationType === WebEngineNavigationRequest.LinkClickedNavigation
            if (!mapHost.acceptNavigation(request.url, linkClicked, request.isMainFrame))
                request.action = WebEngineNavigationRequest.IgnoreRequest
        }
        onNewWindowRequested: function (request) {
            mapHost.openRequestedWindow(request.requestedUrl, request.userInitiated)
        }
        onContextMenuRequested: function (request) {
            request.accepted = true
        }
        onJavaScriptConsoleMessage: function (level, message, lineNumber, sourceID) {
            mapHost.consoleMessage(level, message, lineNumber, sourceID)
        }
        onLoadingChanged: function (info) {
            if (info.status === WebEngineView.LoadSucceededStatus)
                mapHost.loadEnded(true)
            else if (info.status === WebEngineView.LoadFailedStatus)
                mapHost.loadEnded(false)
        }
    }
}
