// Xvfb has no display power management, without which one of the programs we are compared with ends
// at once. Preloaded into that program, this says that there is some and does nothing.

extern "C" {

int DPMSQueryExtension(void*, int* eventBase, int* errorBase) {
  *eventBase = *errorBase = 0;
  return 1;
}

int DPMSGetVersion(void*, int* major, int* minor) {
  *major = *minor = 1;
  return 1;
}

int DPMSCapable(void*) { return 1; }

int DPMSSetTimeouts(void*, unsigned short, unsigned short, unsigned short) { return 1; }

int DPMSGetTimeouts(void*, unsigned short* standby, unsigned short* suspend, unsigned short* off) {
  *standby = *suspend = *off = 0;
  return 1;
}

int DPMSEnable(void*) { return 1; }

int DPMSDisable(void*) { return 1; }

int DPMSForceLevel(void*, unsigned short) { return 1; }

int DPMSInfo(void*, unsigned short* level, unsigned char* enabled) {
  *level = 0;
  *enabled = 0;
  return 1;
}
}
