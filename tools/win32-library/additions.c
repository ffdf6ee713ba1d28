// What neither the headers nor the metadata say, or what both say wrong. Read before them, so that
// these declarations are the library's. Each group names its source.
#line 1 "additions"

typedef int BOOL;
typedef char CHAR;
typedef unsigned short WCHAR;

// PathQuoteSpaces, PathUnquoteSpaces, Microsoft Learn (shlwapi.h): they return whether the path has
// changed. The headers here have no result.
BOOL __attribute__((stdcall)) PathQuoteSpacesA(CHAR *lpsz);
BOOL __attribute__((stdcall)) PathQuoteSpacesW(WCHAR *lpsz);
BOOL __attribute__((stdcall)) PathUnquoteSpacesA(CHAR *lpsz);
BOOL __attribute__((stdcall)) PathUnquoteSpacesW(WCHAR *lpsz);

// Month calendar notifications, Microsoft Learn, MCN_GETDAYSTATE: commctrl.h defines it as
// MCN_FIRST - 1; the headers here count up instead of down.
enum { MCN_GETDAYSTATE = -747 };

// getaddrinfo, Microsoft Learn: EAI_NODATA is EAI_NONAME since RFC 3493, which is WSAHOST_NOT_FOUND.
enum { EAI_NODATA = 11001 };

// DitherType enumeration, Microsoft Learn (gdipluscolor.h). The headers here have a member
// DitherTypeOrdered91x91 in the middle.
enum {
  DitherTypeSpiral4x4 = 5,
  DitherTypeSpiral8x8 = 6,
  DitherTypeDualSpiral4x4 = 7,
  DitherTypeDualSpiral8x8 = 8,
  DitherTypeErrorDiffusion = 9,
  DitherTypeMax = 10
};

// [MS-EMFPLUS] 2.1.1.22, ObjectType enumeration. The headers here lack the image, so that everything
// behind it is one too low. ObjectTypeGraphics comes with GDI+ 1.1.
enum {
  ObjectTypeImage = 5,
  ObjectTypeFont = 6,
  ObjectTypeStringFormat = 7,
  ObjectTypeImageAttributes = 8,
  ObjectTypeCustomLineCap = 9,
  ObjectTypeGraphics = 10,
  ObjectTypeMax = 10
};

// [MS-EMFPLUS] 2.1.1.1, RecordType enumeration. The headers here have a record SetGammaValue in the
// middle, so that everything behind it is one too high.
enum {
  EmfPlusRecordTypeSetInterpolationMode = 0x4021,
  EmfPlusRecordTypeSetPixelOffsetMode = 0x4022,
  EmfPlusRecordTypeSetCompositingMode = 0x4023,
  EmfPlusRecordTypeSetCompositingQuality = 0x4024,
  EmfPlusRecordTypeSave = 0x4025,
  EmfPlusRecordTypeRestore = 0x4026,
  EmfPlusRecordTypeBeginContainer = 0x4027,
  EmfPlusRecordTypeBeginContainerNoParams = 0x4028,
  EmfPlusRecordTypeEndContainer = 0x4029,
  EmfPlusRecordTypeSetWorldTransform = 0x402A,
  EmfPlusRecordTypeResetWorldTransform = 0x402B,
  EmfPlusRecordTypeMultiplyWorldTransform = 0x402C,
  EmfPlusRecordTypeTranslateWorldTransform = 0x402D,
  EmfPlusRecordTypeScaleWorldTransform = 0x402E,
  EmfPlusRecordTypeRotateWorldTransform = 0x402F,
  EmfPlusRecordTypeSetPageTransform = 0x4030,
  EmfPlusRecordTypeResetClip = 0x4031,
  EmfPlusRecordTypeSetClipRect = 0x4032,
  EmfPlusRecordTypeSetClipPath = 0x4033,
  EmfPlusRecordTypeSetClipRegion = 0x4034,
  EmfPlusRecordTypeOffsetClip = 0x4035,
  EmfPlusRecordTypeDrawDriverString = 0x4036,
  EmfPlusRecordTypeStrokeFillPath = 0x4037,
  EmfPlusRecordTypeSerializableObject = 0x4038,
  EmfPlusRecordTypeSetTSGraphics = 0x4039,
  EmfPlusRecordTypeSetTSClip = 0x403A,
  EmfPlusRecordTypeMax = 0x403A,
  EmfPlusRecordTotal = 0x403B
};
