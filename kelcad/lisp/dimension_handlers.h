// AutoLISP handlers of dimensions: making single dimensions and chains,
// merging and splitting them, and changing one dimension's settings. Each
// prints its usage and returns nil when its arguments are not as its usage
// says.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_CreateAlignedDim();    // "kel_createaligneddim"
int KEL_CreateMAlignedDim();   // "kel_createmaligneddim"
int KEL_CreateMBAlignedDim();  // "kel_creatembaligneddim"
int KEL_CreateRotatedDim();    // "kel_createrotateddim"
int KEL_CreateMRotatedDim();   // "kel_createmrotateddim"
int KEL_CreateMBRotatedDim();  // "kel_creatembrotateddim"
int KEL_ManyDimEntToOne();     // "kel_manydimenttoone"
int KEL_OneDimEntToMany();     // "kel_onedimenttomany"

int KEL_SetEntDimStyle();      // "kel_setentdimstyle"
int KEL_SetDimEntTxtStyle();   // "kel_setdimenttxtstyle"
int KEL_SetDimEntTxtHigh();    // "kel_setdimenttxthigh"
int KEL_SetEntDimText();       // "kel_setentdimtext"
int KEL_SetEntDimRnd();        // "kel_setentdimrnd"
int KEL_SetEntDimDec();        // "kel_setentdimdec"
int KEL_SetDimEntProperty();   // "kel_setdimentproperty"

}  // namespace Lisp
}  // namespace KEL
