// layerInfo: one layer of the current drawing (KEL::GetCurDWGPtr), looked
// up by name, made on request, with a snapshot of its state and the
// operations the family's programs use to change it. Nothing here throws
// or prints: every operation answers by its result and keeps the status
// of its last database call in the snapshot.
#pragma once

#include "kelcad/platform.h"

class layerInfo {
 public:
  // The snapshot of the layer as last read or set.
  struct layerStruct {
    CString name;            // the name as the caller gave it
    CString lineTypeName;    // the name of the layer's linetype record
    AcCmColor color;         // the layer's colour
    bool exists = false;     // the record was found
    bool frozen = false;
    bool locked = false;
    bool off = false;
    Acad::ErrorStatus status = Acad::eOk;  // of the last database call
  };

  // Reads the snapshot of the layer name; when it does not exist and
  // create is true, makes it.
  layerInfo(const wchar_t* name, bool create);

  // The snapshot, without reading the drawing.
  virtual bool IsExist();
  virtual bool IsFrozen();
  virtual bool IsLocked();
  virtual bool IsOff();
  // The snapshot's colour is by block / by layer.
  virtual bool IsColorByBlock();
  virtual bool IsColorByLayer();
  virtual CString Name();
  // Set the record's flag and the snapshot's; false when the record
  // cannot be opened for write.
  virtual bool SetIsLocked(bool locked);
  virtual bool SetIsFrozen(bool frozen);
  virtual bool SetIsOff(bool off);
  virtual CString GetLineTypeName();
  // Renames the layer's linetype record itself to ltName: every layer and
  // entity that uses that linetype follows. False for an empty name or
  // when the record refuses the name.
  virtual bool SetLineTypeName(const wchar_t* ltName);
  // The record's colour index, read anew into the snapshot; -1 when the
  // layer is not there.
  virtual int GetColorIndex();
  // Colour index 0-256 (false outside it) into the snapshot and the
  // record. True even when the record could not be opened.
  virtual bool SetColorIndex(int index);
  // The index of an RGB colour (KEL::IsStandardCADColor, else
  // KEL::GetCADColorIndexNearest) set as SetColorIndex does; returns the
  // index, 0 when the layer is not there.
  virtual int SetColor(COLORREF rgb);
  // Renames the layer. The snapshot keeps the old name, so later calls on
  // this object look for a layer of that name.
  virtual bool Rename(const wchar_t* newName);
  // Turns the layer on and thaws it, erases its entities of model space
  // first when deleteEntities, then erases the record.
  virtual bool Erase(bool deleteEntities);
  // Turns the layer on, thaws and unlocks it and makes it current (CLAYER).
  virtual bool SetCurLayer();
  virtual Acad::ErrorStatus GetErrorStatus();
  // The record opened in mode (the caller closes it); null when it cannot
  // be opened.
  virtual AcDbLayerTableRecord* GetRecordPtr(AcDb::OpenMode mode);
  virtual ~layerInfo();

  // Fills s from the record name: exists, flags, colour and linetype name.
  static void GetState(const wchar_t* name, layerStruct& s);
  // The record name of the current drawing opened in mode (the caller
  // closes it); null when there is no drawing, the name is empty or the
  // record cannot be opened, with the status in *status when given.
  static AcDbLayerTableRecord* GetLayerTableRecordPtr(const wchar_t* name, AcDb::OpenMode mode,
                                                      Acad::ErrorStatus* status);
  // Erases the entities of model space (only) of the current drawing whose
  // layer name matches pattern (acutWcMatch). False for an empty pattern,
  // no drawing, or when model space cannot be walked.
  static bool DeleteAllEntity(const wchar_t* pattern);

 protected:
  // The name is not empty and the layer exists (in the snapshot).
  virtual bool ReadyOK();
  // Makes the layer name when it is missing; true when it exists then.
  static bool CreateLayer(const wchar_t* name, layerStruct& s);

  layerStruct m_layer;
};
