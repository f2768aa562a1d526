// Every class descriptor that the library registers: name, base, schema, and whether the class can
// be created from its descriptor. Classes that tests declare have names that begin with "STest".
#ifndef BRCORE8_TESTS_CORE_CLASS_TABLE_H
#define BRCORE8_TESTS_CORE_CLASS_TABLE_H

struct ClassRow {
    const char* name;
    const char* base;  // null for the root alone
    unsigned schema;
    bool creatable;
};

inline constexpr ClassRow kLibraryClasses[] = {
    {"SObject", nullptr, 1, false},
    // Streams.
    {"SInputStream", "SObject", 0, false},
    {"SInputBuffer", "SInputStream", 0, false},
    {"SInputFile", "SInputStream", 0, false},
    {"SInputFilterStream", "SInputStream", 0, false},
    {"SSeekableInputANSIFile", "SInputStream", 0, false},
    {"SInputGlobal", "SInputBuffer", 0, false},
    {"SInputBufferStream", "SInputFilterStream", 0, false},
    {"SInputPushbackStream", "SInputFilterStream", 0, false},
    {"SInputBinaryStream", "SInputFilterStream", 0, false},
    {"SDataInputStream", "SInputFilterStream", 0, false},
    {"SInputMultiFormat", "SInputPushbackStream", 0, false},
    {"SInputForcedANSIStream", "SInputMultiFormat", 0, false},
    {"SInputStringStream", "SInputMultiFormat", 0, false},
    {"SOutputStream", "SObject", 0, false},
    {"SOutputFile", "SOutputStream", 0, false},
    {"SOutputFileOnChange", "SOutputStream", 0, false},
    {"SOutputFilterStream", "SOutputStream", 0, false},
    {"SOutputGlobal", "SOutputStream", 0, false},
    {"SOutputBufferStream", "SOutputFilterStream", 0, false},
    {"SOutputStringStream", "SOutputFilterStream", 0, false},
    {"SOutputBinaryStream", "SOutputFilterStream", 0, false},
    {"SDataOutputStream", "SOutputFilterStream", 0, false},
    // Windows.
    {"SCmdTarget", "SObject", 2, true},
    {"SWinApp", "SCmdTarget", 2, true},
    {"SWnd", "SCmdTarget", 2, true},
    {"SFrameWnd", "SWnd", 2, true},
    {"SMenu", "SObject", 2, true},
    // Bars and what they are made of.
    {"SCtrlBar", "SWnd", 2, true},
    {"SStatusBar", "SCtrlBar", 2, true},
    {"SProgressStatusBar", "SStatusBar", 2, true},
    {"SStatusBarLayout", "SObject", 2, true},
    {"SStatusBarCtrl", "SWnd", 2, true},
    {"SProgressCtrl", "SWnd", 2, true},
    {"SCustomProgressCtrl", "SWnd", 2, true},
    {"SButtonCtrl", "SWnd", 2, true},
    // Controls.
    {"SAnimateCtrl", "SWnd", 2, true},
    {"SButtonExCtrl", "SWnd", 2, true},
    {"SCheckListBoxCtrl", "SListBoxCtrl", 2, true},
    {"SCheckListViewCtrl", "SListViewCtrl", 2, true},
    {"SCheckTreeViewCtrl", "STreeViewCtrl", 2, true},
    {"SColorWellCtrl", "SWnd", 2, true},
    {"SComboBoxCtrl", "SWnd", 2, true},
    {"SComboBoxExCtrl", "SComboBoxCtrl", 2, true},
    {"SDateTimeCtrl", "SWnd", 2, true},
    {"SEditCtrl", "SWnd", 2, true},
    {"SFrameCtrl", "SWnd", 2, true},
    {"SHeaderCtrl", "SWnd", 2, true},
    {"SListBoxCtrl", "SWnd", 2, true},
    {"SListViewCtrl", "SWnd", 2, true},
    {"SNodeWellCtrl", "SButtonExCtrl", 2, false},
    {"SPathPickTreeViewCtrl", "STreeViewCtrl", 2, false},
    {"SRebarCtrl", "SWnd", 2, true},
    {"SRichEditCtrl", "SWnd", 2, true},
    {"SScrollBar", "SWnd", 2, true},
    {"SSliderCtrl", "SWnd", 2, true},
    {"SSpinButtonCtrl", "SWnd", 2, true},
    {"SStaticCtrl", "SWnd", 2, true},
    {"SStaticExCtrl", "SStaticCtrl", 2, true},
    {"STabBeam", "SWnd", 2, true},
    {"STabCtrl", "SWnd", 2, true},
    {"SToolBarCatCtrl", "SWnd", 3, false},
    {"SToolBarCtrl", "SWnd", 2, true},
    {"SToolTipCtrl", "SWnd", 2, true},
    {"STreeViewCtrl", "SWnd", 2, true},
    {"STreeViewExCtrl", "STreeViewCtrl", 2, true},
    // Drawing.
    {"SDC", "SObject", 2, false},
    {"SGdiObject", "SObject", 1, true},
    {"SFont", "SGdiObject", 2, true},
    {"SBitmap", "SGdiObject", 2, true},
    {"SBrush", "SGdiObject", 2, true},
    {"SMetaFile", "SGdiObject", 2, true},
    {"SPalette", "SGdiObject", 2, true},
    {"SPen", "SGdiObject", 2, true},
    {"SRgn", "SGdiObject", 2, true},
    {"SGDIObject", "SObject", 1, false},
    {"SFontOld", "SGDIObject", 2, false},
    {"SImageList", "SObject", 2, true},
    {"SImageListEx", "SImageList", 2, true},
    {"SClientDC", "SDC", 2, false},
    {"SPaintDC", "SDC", 2, false},
    {"SPreviewDC", "SDC", 2, true},
    {"SWindowDC", "SDC", 2, false},
    {"SScreenDC", "SWindowDC", 0, false},
};

#endif
