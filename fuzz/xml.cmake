kavu_add_fuzzer(xml XmlFuzz.cpp LIBS kavu_xml)
