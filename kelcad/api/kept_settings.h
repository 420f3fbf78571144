// The module's own copy of the default text height, used when USERR5
// cannot be read. AutoLISP's "kel_settexthigh" keeps its value here even
// when the drawing refuses it.
#pragma once

namespace KEL {

void KeepTextHigh(double h);

}  // namespace KEL
