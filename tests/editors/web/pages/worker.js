// A worker of the probe page: tries WebTransport (QUIC, over UDP) to the port
// it is given and says whether the interface was there.
onmessage = function (e) {
  var kind = typeof WebTransport;
  if (kind === 'function') {
    try {
      new WebTransport('https://127.0.0.1:' + e.data + '/wt').ready.catch(function () {});
    } catch (x) {
    }
  }
  postMessage(kind);
};
