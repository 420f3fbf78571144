// The public side of AcGiDrawable: each call goes to the class's own sub*
// function.
#include "arx/acgi.h"

Adesk::UInt32 AcGiDrawable::setAttributes(AcGiDrawableTraits* traits) { return subSetAttributes(traits); }

Adesk::Boolean AcGiDrawable::worldDraw(AcGiWorldDraw* wd) { return subWorldDraw(wd); }

void AcGiDrawable::viewportDraw(AcGiViewportDraw* vd) { subViewportDraw(vd); }
