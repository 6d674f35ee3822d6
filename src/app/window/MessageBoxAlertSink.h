#pragma once

#include "config/AlertSink.h"

#include <QPointer>
#include <QWidget>

// Shows the engine's alerts as window-modal message boxes over the main
// window, texts looked up in the viewer's language; the buttons answer 1000,
// 1001, ... in their order.
class MessageBoxAlertSink final : public AlertSink {
public:
    explicit MessageBoxAlertSink(QWidget* parent = nullptr);

    void setParentWidget(QWidget* parent) { m_parent = parent; }
    int showAlert(const AlertRequest& request) override;

private:
    QPointer<QWidget> m_parent;
};
