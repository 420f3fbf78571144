// The drawing database's object model: AcDbObject (identity, owner, open
// state, erase, xdata, extension dictionary), AcDbEntity (layer, colour,
// linetype, visibility), opening objects by id, and AcDbDatabase.
#pragma once

#include "acadstrc.h"
#include "acge.h"
#include "acrx.h"
#include "adsdef.h"
#include "dbid.h"
#include "acarray.h"
#include "dbcolor.h"
#include "dbextents.h"
#include "drawable.h"

namespace kelhost::dxf {
class GroupFiler;
class Access;
}  // namespace kelhost::dxf

class AcDbIdMapping;

namespace AcDb {
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum Visibility { kVisible = 0, kInvisible = 1 };
enum LineWeight {
  kLnWt000 = 0, kLnWt005 = 5, kLnWt009 = 9, kLnWt013 = 13, kLnWt015 = 15, kLnWt018 = 18, kLnWt020 = 20,
  kLnWt025 = 25, kLnWt030 = 30, kLnWt035 = 35, kLnWt040 = 40, kLnWt050 = 50, kLnWt053 = 53, kLnWt060 = 60,
  kLnWt070 = 70, kLnWt080 = 80, kLnWt090 = 90, kLnWt100 = 100, kLnWt106 = 106, kLnWt120 = 120,
  kLnWt140 = 140, kLnWt158 = 158, kLnWt200 = 200, kLnWt211 = 211,
  kLnWtByLayer = -1, kLnWtByBlock = -2, kLnWtByLwDefault = -3,
};
enum TextHorzMode { kTextLeft = 0, kTextCenter = 1, kTextRight = 2, kTextAlign = 3, kTextMid = 4, kTextFit = 5 };
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };
// Which operands intersectWith may extend beyond their ends.
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };
}  // namespace AcDb

typedef AcArray<void*> AcDbVoidPtrArray;
namespace Adesk {
typedef IntPtr GsMarker;
}

// Declares the runtime-class members of a database class.
#define ACRX_DECLARE_MEMBERS(CLASS_NAME)                                                    \
  static AcRxClass* desc();                                                                 \
  static void rxInit();                                                                     \
  static CLASS_NAME* cast(const AcRxObject* inPtr) {                                        \
    return inPtr && inPtr->isKindOf(CLASS_NAME::desc())                                     \
               ? const_cast<CLASS_NAME*>(static_cast<const CLASS_NAME*>(inPtr))             \
               : nullptr;                                                                   \
  }                                                                                         \
  AcRxClass* isA() const override

class AcDbObject : public AcGiDrawable {
 public:
  ACRX_DECLARE_MEMBERS(AcDbObject);
  AcDbObject();
  ~AcDbObject() override;
  AcDbObject(const AcDbObject&) = delete;
  AcDbObject& operator=(const AcDbObject&) = delete;

  AcDbObjectId objectId() const;
  AcDbObjectId ownerId() const { return mOwner; }
  Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
  AcDbHandle objectHandle() const;
  void getAcDbHandle(AcDbHandle& handle) const { handle = objectHandle(); }
  AcDbDatabase* database() const;

  // Ends this opener's access: a writer's, else one reader's, else one
  // notifier's. eNotApplicable for an object that is not in a database
  // (delete it instead) and for one that is not open.
  Acad::ErrorStatus close();
  Acad::ErrorStatus upgradeOpen();
  Acad::ErrorStatus downgradeOpen();
  bool isReadEnabled() const;
  bool isWriteEnabled() const;
  bool isNotifyEnabled() const;
  bool isDatabaseResident() const { return mStub != nullptr; }
  bool isNewObject() const { return mStub == nullptr; }
  bool isErased() const;

  // Erases (or, with false, unerases) an object open for write.
  Acad::ErrorStatus erase(bool erasing = true);

  // Xdata: with a name, that application's data (its 1001 group first);
  // without, all of it. A new chain the caller releases; null when none.
  resbuf* xData(const ACHAR* regappName = nullptr) const;
  // Replaces the data of each application named (1001) in the chain; an
  // application followed by no data loses its xdata. Every application
  // must be registered in the database (eRegappIdNotFound) and the total
  // stays within 16383 bytes (eXdataSizeExceeded). Needs write access.
  Acad::ErrorStatus setXData(const resbuf* xdata);

  AcDbObjectId extensionDictionary() const { return mExtensionDictionary; }
  // Needs write access; eAlreadyInDb when it already has one.
  Acad::ErrorStatus createExtensionDictionary();
  // Only an empty extension dictionary is released (eContainerNotEmpty).
  Acad::ErrorStatus releaseExtensionDictionary();

  // Cloning (see dbidmap.h). deepClone copies the object with what it owns
  // (an entity's extension dictionary and sub-entities, a block's
  // entities) into pOwnerObject, open for write, of the same drawing: an
  // entity into a block table record, a record into its kind of table, an
  // object into a dictionary under its own key. The clone is then in the
  // database and open for write (the caller closes it). Any other owner
  // (the object itself, say) gets a clone outside any database that the
  // caller adds (or deletes); added to another drawing, what it names
  // comes along (records of the same name there are used). Records it
  // names are not cloned: its references stay. eNotInDatabase for an
  // object not in a database, eWrongDatabase for an owner of another
  // drawing, eInvalidOwnerObject for an owner that cannot hold the object,
  // eDuplicateRecordName / eDuplicateKey for a name the owner already has.
  // The pair of this object is assigned in idMap.
  virtual Acad::ErrorStatus deepClone(AcDbObject* pOwnerObject, AcDbObject*& pClonedObject, AcDbIdMapping& idMap,
                                      Adesk::Boolean isPrimary = true) const;
  // The same into pOwnerObject of any drawing, or into a database itself
  // (a record into that drawing's table of its kind, an entity into the
  // block that idMap says its block became): the records it names come
  // along as idMap's duplicate-record cloning says (kDrcIgnore for a new
  // map) and its references are translated to the receiving drawing.
  virtual Acad::ErrorStatus wblockClone(AcRxObject* pOwnerObject, AcDbObject*& pClonedObject, AcDbIdMapping& idMap,
                                        Adesk::Boolean isPrimary = true) const;

  // As a drawable: persistent once in a database, known by its id.
  Adesk::Boolean isPersistent() const override { return isDatabaseResident(); }
  AcDbObjectId id() const override { return objectId(); }

 protected:
  // An object draws nothing; entities override these.
  Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void subViewportDraw(AcGiViewportDraw* vd) override;
  // The object's own DXF groups (after the common ones: type, handle,
  // owner), described once for reading and writing alike.
  virtual void dxfFields(kelhost::dxf::GroupFiler& filer);
  // Write access for the object's own setters: false when not writable.
  bool writable() const { return !mStub || isWriteEnabled(); }
  // Called as the writer closes the object, still with write access: where
  // a class brings what depends on its state up to date (a dimension
  // draws its block).
  virtual Acad::ErrorStatus subClose();

 private:
  friend class AcDbDatabase;
  friend class kelhost::dxf::Access;
  AcDbStub* mStub = nullptr;
  AcDbObjectId mOwner;
  AcDbObjectId mExtensionDictionary;
  resbuf* mXData = nullptr;  // 1001 app, its groups, next app...
};

// A path to a subentity (a face, edge or vertex of an entity nested in
// blocks). The entities the host draws have no subentities: the default
// path, the entity as a whole, is the one that counts.
class AcDbFullSubentPath {
 public:
  AcDbFullSubentPath() = default;
  explicit AcDbFullSubentPath(const AcDbObjectIdArray& objectIds) : mObjectIds(objectIds) {}
  const AcDbObjectIdArray& objectIds() const { return mObjectIds; }

 private:
  AcDbObjectIdArray mObjectIds;
};
extern const AcDbFullSubentPath kNullSubent;

class AcDbEntity : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEntity);
  AcDbEntity();

  AcDbObjectId blockId() const { return ownerId(); }
  // The layer's name as a new string (release with acutDelString / free).
  ACHAR* layer() const;
  AcDbObjectId layerId() const { return mLayer; }
  // The layer must exist (eKeyNotFound otherwise).
  Acad::ErrorStatus setLayer(const ACHAR* newVal, bool doSubents = true);
  Acad::ErrorStatus setLayer(AcDbObjectId newVal, bool doSubents = true);
  Adesk::UInt16 colorIndex() const { return mColorIndex; }
  // 0 (BYBLOCK) to 256 (BYLAYER); eOutOfRange otherwise. Replaces a true colour.
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 color, bool doSubents = true);
  // The colour as drawn: a true colour (DXF group 420) when the entity has
  // one, else its colour index.
  AcCmEntityColor entityColor() const;
  ACHAR* linetype() const;
  AcDbObjectId linetypeId() const { return mLinetype; }
  Acad::ErrorStatus setLinetype(const ACHAR* newVal, bool doSubents = true);
  Acad::ErrorStatus setLinetype(AcDbObjectId newVal, bool doSubents = true);
  double linetypeScale() const { return mLinetypeScale; }
  Acad::ErrorStatus setLinetypeScale(double newVal, bool doSubents = true);
  AcDb::LineWeight lineWeight() const { return static_cast<AcDb::LineWeight>(mLineWeight); }
  Acad::ErrorStatus setLineWeight(AcDb::LineWeight newVal, bool doSubents = true);
  AcDb::Visibility visibility() const { return mInvisible ? AcDb::kInvisible : AcDb::kVisible; }
  Acad::ErrorStatus setVisibility(AcDb::Visibility newVal, bool doSubents = true);
  // Layer, colour, linetype and scale from the database's current values.
  void setDatabaseDefaults();
  void setDatabaseDefaults(AcDbDatabase* db);
  // Shows the entity highlighted, or normally again, in every view (the
  // headless host keeps the state: kelhost::IsHighlighted). The entity
  // must be in a database (eNotInDatabase); open for read is enough.
  virtual Acad::ErrorStatus highlight(const AcDbFullSubentPath& subId = kNullSubent,
                                      const Adesk::Boolean highlightAll = false) const;
  virtual Acad::ErrorStatus unhighlight(const AcDbFullSubentPath& subId = kNullSubent,
                                        const Adesk::Boolean highlightAll = false) const;
  // Copies layer, colour, linetype, scale, lineweight and visibility.
  Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* from, bool doSubents = true);

  // Geometry. The box around the entity in WCS (eInvalidExtents when it
  // has none); moving, rotating, scaling or mirroring it; the simpler
  // entities it is made of (new, not in a database: the caller deletes
  // them); where it meets another entity (points in WCS appended to
  // points). Entities without geometry answer eNotApplicable.
  virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);
  virtual Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const;
  virtual Acad::ErrorStatus intersectWith(const AcDbEntity* entity, AcDb::Intersect intType,
                                          AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker = 0,
                                          Adesk::GsMarker otherGsMarker = 0) const;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;
  // The entity's layer, colour, linetype, its scale and lineweight.
  Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
  // An entity of a class that has no geometry draws nothing.
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;

 private:
  friend class kelhost::dxf::Access;
  AcDbObjectId mLayer;
  AcDbObjectId mLinetype;  // null: BYLAYER
  double mLinetypeScale = 1.0;
  Adesk::UInt16 mColorIndex = 256;
  std::int32_t mTrueColor = -1;  // 0x00RRGGBB, or -1 for none
  Adesk::Int16 mLineWeight = AcDb::kLnWtByLayer;
  bool mInvisible = false;
  bool mPaperSpaceRequested = false;  // 67 read from a list: where entmake puts it
};

// Opens the object of id in mode. eNullObjectId, eInvalidObjectId (no such
// live object), eWasErased (unless openErased), eWasOpenForWrite (a writer
// holds it), eWasOpenForRead (opening for write while readers hold it),
// eAtMaxReaders. pObj is null on failure.
Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false);
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);

// The typed form: eNotThatKindOfClass, with nothing left open, when the
// object is not a T.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& pObj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
  pObj = nullptr;
  AcDbObject* obj = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(obj, id, mode, openErased);
  if (es != Acad::eOk) return es;
  T* typed = T::cast(obj);
  if (!typed) {
    obj->close();
    return Acad::eNotThatKindOfClass;
  }
  pObj = typed;
  return Acad::eOk;
}
