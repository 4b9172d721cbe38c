kavu_add_fuzzer(sdk SdkFuzz.cpp LIBS kavu_sdk)
