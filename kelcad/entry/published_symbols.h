// AutoLISP symbols the module publishes at start-up, into the AutoLISP
// environment of the document current at that time.
#pragma once

namespace KEL {

// One symbol "GC::<key>" per entry of the initialisation settings' section
// "GC" whose value splits at commas into exactly two parts, value and type:
// "Double" gives a real, "Int" a 16-bit integer, anything else the first
// part as a string (types compared without regard to case).
void PublishGCSymbols();

// The family's directories as strings ("%ACAD14Dir%", "%ACAD15Dir%",
// "%InstallDir%", "%LocalDir%", "%WorkDir%"; empty when unavailable), then
// the tolerances as reals ("%ZERO%", "%DoubleEQ%", "%PointEQ%",
// "%VectorEQ%").
void PublishPathAndToleranceSymbols();

}  // namespace KEL
