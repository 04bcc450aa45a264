#pragma once

#include <QMainWindow>

#include <memory>

namespace kelo {
class DXDocumentModel;
class DXOpenGL;
}

namespace viewer {

/// The viewer's window: the treatment view, and the commands that it has so far.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The view takes `viewSize` points; the window is as much larger as it needs to be.
    explicit MainWindow(const QSize &viewSize);
    ~MainWindow() override;

    kelo::DXOpenGL &view() { return *view_; }
    void showTreatment(std::shared_ptr<kelo::DXDocumentModel> document, const QString &patientName);

private:
    void makeMenus();
    void savePicture();
    void toggleFullScreen();

    std::shared_ptr<kelo::DXOpenGL> view_;
};

} // namespace viewer
