// frmMain: its table and its controls by name.
#pragma once

#include <memory>

#include "toolkit/captioned.h"
#include "toolkit/form.h"
#include "toolkit/form_definition.h"
#include "toolkit/list_view.h"
#include "toolkit/menu.h"
#include "toolkit/picture_box.h"
#include "toolkit/rich_text.h"
#include "toolkit/row_list.h"
#include "toolkit/text_box.h"
#include "toolkit/timer.h"
#include "toolkit/toolbar.h"
#include "toolkit/toolkit.h"

namespace declarium {

[[nodiscard]] const FormDefinition& MainFormDefinition();

struct MainForm {
  explicit MainForm(Toolkit& toolkit);

  std::unique_ptr<Form> frmMain;
  Toolbar& Toolbar1;
  ComboBox& cmbDatabase;
  ComboBox& cmbSelector;
  ComboBox& cmbRange;
  TextBox& txtInput;
  ListBox& lstConst;
  ListBox& lstDeclare;
  ListBox& lstType;
  TextBox& txtFind;
  ListBox& lstFind;
  ListView& lstAdd;
  ListView& lstShare;
  RichText& RTB;
  PictureBox& PosMainWidth;
  PictureBox& PosRtbHeight;
  PictureBox& PosAddHeight;
  Timer& CodeModuleChecker;
  MenuItem& mnuDatabase;
  MenuItem& mnuNew;
  MenuItem& mnuOpen;
  MenuItem& mnuSave;
  MenuItem& mnuSaveAs;
  MenuItem& mnuRename;
  MenuItem& mnuRestore;
  MenuItem& mnuImport;
  MenuItem& mnuExport;
  MenuItem& mnuAdd;
  MenuItem& mnuDeleteDbItem;
  MenuItem& mnuCheck;
  MenuItem& mnuClose;
  MenuItem& mnuInsertMissing;
  MenuItem& mnuCompleteModule;
  MenuItem& mnuProject;
  MenuItem& mnuPopupAddList;
  MenuItem& mnuDelOnce;
  MenuItem& mnuDelGroup;
  MenuItem& mnuDelAll;
  MenuItem& mnuSaveList;
  MenuItem& mnuOpenList;
  MenuItem& mnuGuide;
  MenuItem& mnuHelpHere;
  MenuItem& mnuAbout;
};

}  // namespace declarium
