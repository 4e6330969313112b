// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickItem>
#include <functional>
#include <memory>

#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Presentation/PacedWindow.h"

namespace velmora {

/// An ordinary window that shows one view at the view's own size and follows the theme. It is made
/// when it is to be shown and freed when it closes. Main thread.
class ViewWindow : public PacedWindow {
    Q_OBJECT

  public:
    /// The theme outlives the window until that is disposed of.
    ViewWindow(Theme& theme, std::unique_ptr<QQuickItem> view);
    ~ViewWindow() override;

    QQuickItem& view() const { return *view_; }

    /// Called once when the user closes the window.
    void setClosedHandler(std::function<void()> handler) { closed_ = std::move(handler); }

    /// A window that its view draws whole, with corners of the view's `cornerRadius` and no frame.
    void makeFrameless();

    /// A window with a title bar that can be closed and put away, of a fixed size that fits this
    /// part of the screen.
    void makeTitled(const Rect& visibleFrame);

    /// Puts the window into the middle of the primary screen's visible frame.
    void centerOn(const ScreenGeometry& screens);

    /// Shows it with the focus on its view, on top of the others. A window that is not on the
    /// screen yet comes there by and by, in pieces, each when the display has time for it: the
    /// toolkit asks it several questions for each. It becomes active as window managers see fit for
    /// new windows.
    void present();

    /// Where the window stands, or stood when it was closed, in Qt's logical coordinates.
    QRect lastFrame() const { return isClosed_ ? closingFrame_ : geometry(); }

    /// Takes the window off the screen and frees it once the current event is over, or later where
    /// no event loop runs. It uses nothing of the program's any more.
    static void dispose(std::unique_ptr<ViewWindow> window);

  protected:
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;

  private:
    void bringUp();
    void comeWhenAnswered();
    void comeNearer();
    void applyTheme();
    void applyShape();
    bool isFrameless() const { return flags().testFlag(Qt::FramelessWindowHint); }

    std::unique_ptr<QQuickItem> view_;
    std::function<void()> closed_;
    bool isComing_ = false;  ///< To be shown in pieces, and not shown yet.
    bool isDrawn_ = false;   ///< Its first frame is made.
    bool hasCome_ = false;   ///< It was on the screen once.
    bool isClosed_ = false;  ///< By the user.
    QRect closingFrame_;
};

}  // namespace velmora
