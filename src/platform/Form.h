#pragma once

#include <QBasicTimer>
#include <QStringList>
#include <functional>
#include <initializer_list>
#include <span>
#include <utility>

#include "platform/ContentArea.h"
#include "platform/ControlDesign.h"
#include "platform/HandlerScope.h"

class QMenuBar;

namespace kelvane {

class Control;
class Menu;

enum class WindowState { kNormal = 0, kMinimised = 1, kMaximised = 2 };
enum class BorderStyle { kSizable = 2, kFixedDialog = 3 };

struct FormDesign {
  const char* name;
  const char* caption;
  float clientWidth;  // twips
  float clientHeight;
  QRgb backColor;
  QRgb labelColor;  // text of labels and option buttons, and of lists and text boxes with `color`
  ScaleMode scale;
  BorderStyle border = BorderStyle::kSizable;
  // The window's least size, menu bar included, in twips. Form_Resize must enforce it.
  float leastWidth = 0;
  float leastHeight = 0;
};

// A window. Load runs Form_Load and shows nothing. Unload, which closing the window calls, runs
// Form_QueryUnload and Form_Unload, stops the window's timers and hides it. The program ends when
// its last loaded form has been unloaded and every handler has returned. Until the user or a
// handler gives a control the keyboard focus, none has it.
//
// Belongs to the user-interface thread.
class Form : public HandlerOwner {
  Q_OBJECT
 public:
  Form(const FormDesign& design, std::span<const ControlDesign> controls,
       std::span<const MenuDesign> menus = {});

  // Loading a loaded form does nothing.
  void Load();
  // Shows the window, modeless, and in front of `owner` unless that is null.
  void Show(Form* owner = nullptr);
  // Unloading a form that isn't loaded, or is being unloaded, does nothing.
  void Unload();

  // The size of the window with its menu bar and without the window manager's frame, in twips.
  // Setting the size has no effect while the window is maximised or full screen, or while the
  // window takes over a size that a Wayland compositor or a window manager imposes. A negative or
  // non-finite value has no effect.
  float Width() const;
  float Height() const;
  void setWidth(float width);
  void setHeight(float height);

  // The size of the area below the menu bar, in the form's scale unit.
  float ScaleWidth() const;
  float ScaleHeight() const;

  WindowState State() const;
  QString Caption() const { return windowTitle(); }
  void setCaption(const QString& caption) { setWindowTitle(caption); }
  void setMousePointer(MousePointer pointer) { setCursor(CursorOf(pointer)); }
  // Makes the Tab key go through these controls in this order.
  static void OrderFocus(std::initializer_list<Control*> controls);

  // Raised when the user has dropped files anywhere on the window; not at once, but by the event
  // loop, so that the program from which the files come needn't wait for the handler. `paths` are
  // the absolute paths of those dropped items that are existing regular files on this machine, at
  // least one, in the order of the drop; the other items are ignored. A drop without such a file is
  // refused, which the pointer shows. So is a drop of files that can only be moved, and any drop
  // while a dialog of the program is open, or if there is no handler.
  std::function<void(const QStringList& paths)> FilesDropped;
  // Returns whether the window takes drops at present. An empty function stands for yes.
  std::function<bool()> TakesDrops;

  // Returns the control, menu or timer of that name, which must exist.
  template <class Kind>
  Kind& Find(const QString& name) const {
    Kind* found = findChild<Kind*>(name);
    Q_ASSERT(found != nullptr);
    return *found;
  }

 protected:
  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  virtual void Form_MouseMove(const MouseEvent& /*event*/) {}
  virtual void Form_QueryUnload() {}
  virtual void Form_Unload() {}

  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool nativeEvent(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  void BuildMenus(std::span<const MenuDesign> menus);
  void BuildControls(const FormDesign& form, std::span<const ControlDesign> controls);
  bool DropsAreTaken() const;
  bool AnswerDrag(QDropEvent& event) const;
  bool ChoosesItsSize() const;
  void SetSize(QSize size);
  void ResizeTo(QSize size);
  void TakeGivenSize();
  int BarHeight(int width) const;
  void LayOutArea();
  void RaiseResize();

  ContentArea* area_;
  QMenuBar* menuBar_ = nullptr;
  BorderStyle border_;
  QSize least_;
  float width_ = 0;  // twips, as assigned
  float height_ = 0;
  bool unloading_ = false;
  bool minimised_ = false;
  bool takesGivenSize_ = false;   // true while TakeGivenSize or a compositor's resize event runs
  QBasicTimer geometrySettling_;  // restarted by each geometry that X reports
  bool dragged_ = false;          // whether a pointer button was held at one of these reports
  QStringList draggedFiles_;      // of the drag that was last over the window
};

// Owns the one loaded form of a class, which is made by Load and deleted after it is unloaded.
// Belongs to the user-interface thread.
template <class FormClass>
class FormInstance {
 public:
  ~FormInstance() { delete form_; }

  // Makes and loads the form, with `arguments` for its constructor, if none is loaded. Returns the
  // loaded form.
  template <class... Arguments>
  FormClass& Load(Arguments&&... arguments) {
    if (!Loaded()) {
      form_ = new FormClass(std::forward<Arguments>(arguments)...);
      form_->DeleteWhenUnloaded();
      form_->Load();
    }
    return *form_;
  }
  bool Loaded() const { return form_ != nullptr && form_->Loaded(); }
  bool Visible() const { return Loaded() && form_->isVisible(); }
  void Unload() {
    if (form_ != nullptr) form_->Unload();
  }

 private:
  QPointer<FormClass> form_;
};

}  // namespace kelvane
