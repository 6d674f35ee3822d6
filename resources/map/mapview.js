// The viewer's map page. The viewer talks to it only through three global
// functions: initialize(), addPolyLine(points, colour, width, opacity) and
// MapMoveToAuto(lng, lat, zoom). The viewer may call them before the page is
// ready; such calls wait here and run, in order, once the map exists.
(function () {
    'use strict';

    var kDefaultTiles = 'https://tile.openstreetmap.org/{z}/{x}/{y}.png';
    var kDefaultAttribution =
        '&copy; <a href="https://www.openstreetmap.org/copyright">OpenStreetMap</a> contributors';
    var kAutoZoom = 16;

    var state = {
        map: null,
        route: null,
        position: null,
        pending: [],
        tileErrors: 0,
        tileLoads: 0,
        scriptErrors: 0
    };

    window.addEventListener('error', function () { state.scriptErrors += 1; });

    function option(name, fallback) {
        var value = new URLSearchParams(window.location.search).get(name);
        return value ? value : fallback;
    }

    function updateOfflineNote() {
        var note = document.getElementById('offline-note');
        if (note)
            note.hidden = !(state.tileErrors > 0 && state.tileLoads === 0);
    }

    function createMap() {
        var map = L.map('map', { worldCopyJump: true, zoomSnap: 1 });
        map.setView([20, 0], 2);
        var tiles = L.tileLayer(option('tiles', kDefaultTiles), {
            maxZoom: 19,
            keepBuffer: 1,
            attribution: option('attribution', kDefaultAttribution)
        });
        // Without network every tile fails: count them and say so, the route
        // still shows on the plain background.
        tiles.on('tileerror', function () { state.tileErrors += 1; updateOfflineNote(); });
        tiles.on('tileload', function () { state.tileLoads += 1; updateOfflineNote(); });
        tiles.addTo(map);
        state.map = map;
    }

    function whenDocumentReady(fn) {
        if (document.readyState === 'loading')
            document.addEventListener('DOMContentLoaded', fn);
        else
            fn();
    }

    function callWhenReady(fn, args) {
        if (state.map)
            fn.apply(null, args);
        else
            state.pending.push([fn, args]);
    }

    function runPending() {
        var calls = state.pending;
        state.pending = [];
        calls.forEach(function (call) { call[0].apply(null, call[1]); });
    }

    function validLatLng(lat, lng) {
        return isFinite(lat) && isFinite(lng) && Math.abs(lat) <= 90 && Math.abs(lng) <= 180;
    }

    // "lng,lat|lng,lat|..." -> Leaflet points (latitude first).
    function parsePoints(text) {
        var points = [];
        String(text || '').split('|').forEach(function (pair) {
            var parts = pair.split(',');
            if (parts.length !== 2)
                return;
            var lng = parseFloat(parts[0]);
            var lat = parseFloat(parts[1]);
            if (validLatLng(lat, lng))
                points.push(L.latLng(lat, lng));
        });
        return points;
    }

    function drawRoute(text, colour, width, opacity) {
        var map = state.map;
        if (state.route) {
            map.removeLayer(state.route);
            state.route = null;
        }
        var points = parsePoints(text);
        if (points.length === 0)
            return;
        state.route = L.polyline(points, {
            color: String(colour || 'red'),
            weight: Number(width) || 4,
            opacity: isFinite(Number(opacity)) ? Number(opacity) : 0.5,
            interactive: false
        }).addTo(map);
        map.fitBounds(state.route.getBounds(), { padding: [16, 16], maxZoom: 17, animate: false });
    }

    // zoom < 0 keeps the zoom the route chose, or zooms in from the world view.
    function moveTo(lng, lat, zoom) {
        lng = Number(lng);
        lat = Number(lat);
        if (!validLatLng(lat, lng))
            return;
        var map = state.map;
        var target = L.latLng(lat, lng);
        var z = Number(zoom) >= 0 ? Number(zoom) : (map.getZoom() < 10 ? kAutoZoom : map.getZoom());
        map.setView(target, z, { animate: false });
        if (!state.position) {
            state.position = L.circleMarker(target, {
                radius: 6, weight: 2, color: '#ffffff', fillColor: '#f5a623', fillOpacity: 1,
                interactive: false
            }).addTo(map);
        } else {
            state.position.setLatLng(target);
        }
    }

    window.initialize = function () {
        whenDocumentReady(function () {
            if (!state.map)
                createMap();
            runPending();
        });
    };

    window.addPolyLine = function (points, colour, width, opacity) {
        callWhenReady(drawRoute, [points, colour, width, opacity]);
    };

    window.MapMoveToAuto = function (lng, lat, zoom) {
        callWhenReady(moveTo, [lng, lat, zoom]);
    };

    // The note shown when no tile loads, in the viewer's language.
    window.setOfflineText = function (text) {
        whenDocumentReady(function () {
            var note = document.getElementById('offline-note');
            if (note)
                note.textContent = text;
        });
    };

    // Read-only snapshot for diagnostics and the viewer's tests.
    window.tavroMapState = function () {
        var map = state.map;
        var route = state.route ? state.route.getLatLngs().map(function (p) { return [p.lng, p.lat]; }) : null;
        var routeOptions = state.route ? state.route.options : null;
        return JSON.stringify({
            initialized: !!map,
            pending: state.pending.length,
            center: map ? [map.getCenter().lng, map.getCenter().lat] : null,
            zoom: map ? map.getZoom() : null,
            route: route,
            routeColour: routeOptions ? routeOptions.color : null,
            routeWidth: routeOptions ? routeOptions.weight : null,
            routeOpacity: routeOptions ? routeOptions.opacity : null,
            routeDrawn: !!(state.route && state.route._path && state.route._path.getAttribute('d')),
            position: state.position ? [state.position.getLatLng().lng, state.position.getLatLng().lat] : null,
            offlineNote: document.getElementById('offline-note').textContent,
            tileErrors: state.tileErrors,
            tileLoads: state.tileLoads,
            offlineNoteShown: !document.getElementById('offline-note').hidden,
            scriptErrors: state.scriptErrors,
            leafletVersion: window.L ? L.version : null
        });
    };
}());
