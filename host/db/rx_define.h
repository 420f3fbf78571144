// Defines the runtime-class members that ACRX_DECLARE_MEMBERS declares.
#pragma once

#include "arx/acrx.h"

#define KELHOST_RX_DEFINE(CLASS, PARENT, DXFNAME)                     \
  AcRxClass* CLASS::desc() {                                          \
    static AcRxClass cls(L"" #CLASS, DXFNAME, PARENT::desc());        \
    return &cls;                                                      \
  }                                                                   \
  AcRxClass* CLASS::isA() const { return CLASS::desc(); }            \
  void CLASS::rxInit() { CLASS::desc(); }
