// The C library of this machine looks for a file of another processor's here; declarations alone need neither.
#pragma once
