#include "workspace/Module2.h"

#include "shared/SharedValues.h"
#include "workspace/Form1.h"

namespace kelvane {

using namespace Qt::StringLiterals;

void ResetEverything(Form1& form) {
  if (form.form2_.Visible()) form.form2_.Unload();

  form.Timer2.setEnabled(false);
  form.wmp.controls.stop();
  form.wmp.setURL(QString());
  form.Picture1(CanvasBox).setVisible(false);
  form.Text1(1).setText(QString());
  form.pbar.setValue(0);

  const QString zero = u"0,000"_s;
  for (int index = RegionLeft; index <= form.Label1.UBound(); index += 2) {
    form.Label1(index).setCaption(zero);
  }
  form.Label1(SourceWidth).setCaption(zero);
  form.Label1(SourceHeight).setCaption(zero);

  ProbeDimensionsDone = false;
  CropWidth = 0;
  CropHeight = 0;
  CropLeft = 0;
  CropTop = 0;
  CropFilter = u"0"_s;
  VideoDuration.clear();
  VideoPath.clear();
}

}  // namespace kelvane
