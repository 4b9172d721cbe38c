// The texts of the numbered messages. A number is never used again for another text, so a
// retired one leaves its gap. Users know the texts by heart, so odd spelling stays. The
// texts are in a header so that the compiler checks each against the arguments it gets
// (see MessageFor.h).
#pragma once

#include <cstddef>
#include <string_view>

namespace kavu {

/// One row of the table of messages.
struct MessageText {
    template <std::size_t Size>
    constexpr MessageText(int number, const char (&literal)[Size])
        : id(number), text(literal, Size - 1) {}

    int id;
    std::string_view text;
};

/// All rows by ascending id: 1 to 71 are the prompts of the menu, from 73 messages and
/// titles.
inline constexpr MessageText kMessageTexts[] = {
    // --- Prompts of the menu commands
    {1, "Create a new TMATS file"},
    {2, "Open an existing TMATS file"},
    {4, "Save TMATS file to disk"},
    {5, "Save TMATS file to disk with a different name"},
    {11, "Close TMATS File"},
    {12, "Exit KAVU-9"},
    {13, "Edit GENERAL Information Section"},
    {14, "Edit TRANSMISSION Attributes"},
    {15, "Edit Recorder/Reproducer Attributes"},
    {16, "Edit MULTIPLEX/MODULATION Information"},
    {17, "Edit Stream Format Information"},
    {18, "Edit Data Conversion Information"},
    {19, "Edit Airborne Hardware Information (H-Section)"},
    {20, "Edit Vendor Specific Information (V-Section)"},
    {21, "Edit PAM attributes"},
    {22, "Display plots for multiple measurements"},
    {23, "Print calibration plots for all pair-sets measurements"},
    {28, "Change Report Options"},
    {29, "Edit the contents of the Measurement Database"},
    {30, "Change Measurement Database Path Name"},
    {31, "Import External File Into KAVU Database"},
    {32, "Enable Measurement Database"},
    {33, "Disable Measurement Database"},
    {38, "Control how/if measurement sample rates are automatically calculated."},
    {39, "Define custom strings that will become part of the EU Comment field"},
    {40, "Select how many digits to display, when displaying floating point data"},
    {41, "Change KAVU-Update Options"},
    {42, "Set IRIG 106 versions for TMATS Files"},
    {55, "Display KAVU-9 Help"},
    {56, "Display KAVU-9 Information"},
    // --- Messages and titles
    {73,
     "This is a 106-%2.2d TMATS file. The feature you are trying to access was not "
     "introduced until IRIG version 106-%2.2d"},
    {74, "ERROR: KAVU-9 Unable To Open TMATS File"},
    {75, "Error Reading TMATS File"},
    {76, "%sWARNING: The TMATS %s you have been editing, has been modified.\n\nSave %s first?"},
    {77, "Unable to allocate memory. Please terminate KAVU-9"},
    {78, "KAVU-9 Error"},
    {79, "KAVU-9 Warning"},
    {80, "KAVU-9"},
    {81, "KAVU-9 Internal Error"},
    {82, "Are You Sure?"},
    {83, "Delete This Entry?"},
    {84, "Error Saving TMATS File"},
    {85, "Unable To Edit %s"},
    {86, "Illegal Value Found"},
    {87, "Illegal Value Entered"},
    {88, "Error Reading PCM Format Information"},
    {89, "Error Reading Measurement Information In TMATS File"},
    {90, "Illegal Number Of Measurement Lists Found"},
    {91, "Incomplete Minor Frame Fragmented Definition Found"},
    {92, "KAVU-9 Error Reading Subframe Fragmented Information"},
    {93, "Error Reading Multiplex Information"},
    {94, "Unable To Fully Process TMATS File"},
    {95, "Unable To Initialize PCM Measurement Information"},
    {96, "Unable To Initialize Measurement"},
    {97, "Unable To Initialize Subframe Supercom Interval Measurement"},
    {98, "Unable To Initialize Subframe Supercom Every Location Measurement"},
    {99, "Unable To Initialize Async Embedded Format Information"},
    {100, "Error Saving PCM Format Information"},
    {101, "Error Saving Measurement Information"},
    {102, "Operation Aborted"},
    {103, "KAVU-9 Error Reading Subframe Information In PCM Measurement Section"},
    {104, "Incomplete Subframe Fragmented Definition Found"},
    {105, "No Data Conversion Information Defined"},
    {106, "Error Reading Data Conversion Information"},
    {107, "Unable To Save Data Conversion Information"},
    {108, "Unable To Read Bus Information"},
    {109, "Error Reading Bus Information"},
    {110, "Unable To Initialize Bus Message"},
    {111, "Unable To Save Bus Information"},
    {112, "Invalid Sub Terminal Address"},
    {113, "Invalid Remote Terminal Address"},
    {114, "Invalid T/R Mode"},
    {115, "Required Information Missing"},
    {116, "Measurement Error"},
    {117,
     "You are about to permanently delete the definition for measurement '%s', including "
     "the Data Conversion definition.\n\nAre you sure?"},
    {118,
     "You are about to permanently delete the EU definitions for measurement '%s'.\n\nAre "
     "you sure?"},
    {119, "Unable To Save Measurement"},
    {120, "Invalid Interval Definition"},
    {121, "Invalid Measurement Every Location Definition"},
    {122, "This subframe does not reference an ID Counter. Please enter ID Counter to be used."},
    {123,
     "You are about to permanently delete the definition for subframe '%s', and any "
     "measurement information defined for this frame word position.\n\nAre you sure?"},
    {124, "Delete Subframe Definition?"},
    {125, "Invalid Number Of Supercommutated Locations"},
    {126, "Unable To Save New Subframe Definitions"},
    {127, "Error Displaying Subframe"},
    {128, "Delete ID Counter Definition?"},
    {129,
     "You are about to permanently delete this ID Counter definition, and any measurement "
     "information defined for this frame word position.\n\nAre you sure?"},
    {130, "Unable To Delete ID Counter"},
    {131, "Error Saving Minor Frame Supercom Every Location"},
    {132, "Error Saving Minor Word Fragment Every Location"},
    {133, "Unable To Save Measurement Subframe Supercom Definition"},
    {134, "Error Saving Subframe Supercom Every Location"},
    {135, "Error Saving Subframe Fragmented Every Location"},
    {136, "Unable To Save Async Format"},
    {137,
     "You are about to delete the link to this Asynchronous Embedded PCM Format "
     "definition.\n\nAre you sure?"},
    {138, "Delete Async Format?"},
    {139, "KAVU-9 Warning - Illegal Character Entered"},
    {140,
     "You are about to permanently delete Data Source '%s', and all stream definitions "
     "associated with it.\n\nContinue?"},
    {141, "Error: Another Data Source exists with this name. Please select another name."},
    {142,
     "You have entered an invalid bit mask. This field must either be 'FW', or a binary "
     "string of 1's and 0's."},
    {143,
     "You have entered an invalid bit mask. This field must either be 'FW', or a hex "
     "string (0-9,A-F)"},
    {144,
     "The TMATS file '%s' is READ ONLY. You will not be able to save any changes made to "
     "this file, unless saved with a different name."},
    {145, "Previous '%s' TMATS definition was not found. Creating new definition"},
    {146,
     "Should KAVU-9 also create a new 'TMATS Template' for you?\n\nIf you select yes, "
     "KAVU-9 will create a new TMATS file for you, with a General Information section, "
     "one RF Data Source, a Multiplex/Modulation section, and one PCM Stream definition.\n"
     "\nIf you select no, a new TMATS file will still be created, but you will have to "
     "manually create each section yourself."},
    {153,
     "ERROR: Your screen resolution is %d X %d. KAVU requires a display resolution of at "
     "least %d X %d to function normally.\n\nContinue Anyway?"},
    {154, "No %s definitions have been defined yet!"},
    {155, "Do you wish to delete all selected measurements?"},
    {156,
     "No Message Data definition (S-Group) has been created yet. Would you like to create "
     "one now?"},
    {157,
     "Illegal or partial command detected at the end of the file. Last line read was line "
     "#%ld. Operation aborted."},
    {158,
     "An error was detected while writing to the temporary file: '%s'.\n\nOperation "
     "Aborted."},
    {159, "INTERNAL ERROR: Unable to display dialog"},
    {160, "You must enter a number between %d and %d."},
    {161, "You must enter a number greater than %d."},
    {162, "You must enter a number greater than or equal to %d."},
    {163, "Illegal %s entered. You must enter a number between %d and %d."},
    {164, "Unable to locate measurement information at Frame Word Position: %d Frame Number: %d"},
    {165,
     "Unable to locate Format Type definition (TF) command in TMATS file. Defaulting this "
     "PCM Format to a Class One format."},
    {166,
     "This is a 1553 stream. An illegal Word Transfer Order definition was found in the "
     "TMATS file. Word Transfer Order has been changed to MSB."},
    {167,
     "This is a 1553 stream. An illegal Format Parity definition was found in the TMATS "
     "file. Format Parity has been changed to ODD."},
    {168,
     "This is a 1553 stream. An illegal Parity Transfer Order definition was found in the "
     "TMATS file. Parity Transfer Order has been changed to 'Leads Word'."},
    {169,
     "This is a 1553 stream. An illegal number of minor frames was found in the TMATS "
     "file definition. Number of minor frames has been changed to 1."},
    {170,
     "This is a 1553 stream. An illegal Sync Type definition was found in the TMATS file. "
     "Sync Type has been changed to FPT."},
    {171,
     "This is a 1553 stream. An illegal frame sync pattern length definition was found in "
     "the TMATS file definition. Frame sync pattern length has been changed to 24."},
    {172,
     "This is a 1553 stream. An illegal frame sync pattern definition was found in the "
     "TMATS file definition. Frame sync pattern has been changed."},
    {173,
     "Unable to process variable word length definition for frame word position %d. This "
     "PCM format is defined with a maximum of %d words per minor frame (numbered 1 to "
     "%d). This definition will be ignored."},
    {174,
     "Unable to process variable word length definition for frame word position %d. An "
     "invalid number was found. Setting this Frame Word Position to common word length."},
    {175,
     "Unable to determine word length for word position %d. Could not locate '%s' command "
     "in TMATS file. Word length for this frame word position set to common word length."},
    {176,
     "Bits Per Minor Frame definition (MF2) in the TMATS file was not correct. According "
     "to the TMATS definition, this PCM format contains %d Bits Per Minor Frame, but the "
     "actual number of bits calculated is %d. Bits Per Minor Frame has been changed."},
    {177,
     "ID Counter definition too large. This program only allows up to %d ID Counter "
     "definitions."},
    {178, "Unable to allocate memory for ID Counter data structure. Operation aborted."},
    {179,
     "Unable to process ID Counter definition for %s at Frame Word Position %d. This PCM "
     "format is defined with a maximum of %d words per minor frame (numbered 1 to %d). "
     "This ID counter definition (and it's subframe definitions) will be ignored."},
    {180, "PCM format too big. This program only allows %d subframe definitions."},
    {181, "Unable to allocate memory for subframe data structure. Operation aborted."},
    {182,
     "Error reading subframe definition for %s. This subframe is NOT Supercommutated, yet "
     "the location definition (%s%s) record indicates that it was. Location definition "
     "record being ignored."},
    {183,
     "Error reading subframe definition for %s. This subframe is Supercommutated, yet the "
     "location definition (%s%s) record was invalid or missing. This subframe will NOT be "
     "supercommutated."},
    {184,
     "Unable to process Subframe definition for %s at Frame Word Position %d. This PCM "
     "format is defined with a maximum of %d words per minor frame (numbered 1 to %d). "
     "This ID counter definition (and it's subframe definitions) will be ignored."},
    {185,
     "Error found reading location definition (%s%s) in TMATS file for subframe "
     "definition '%s'. The location of this new subframe definition is Frame Word "
     "Position %d. Frame Word Position %d is already defined as a SUBFRAME or ID COUNTER."
     "\n\nThis definition will be ignored."},
    {186,
     "Unable to locate '%s%s' subframe location definition entry in TMATS file for "
     "subframe '%s'. This subframe definition will be ignored."},
    {187,
     "An illegal number of Asynchronous Embedded PCM Format definitions was found. TMATS "
     "only supports %d embedded streams.\n\nNo Asynchronous Embedded Formats will be "
     "processed."},
    {188, "There are too many minor frames defined (%d). Number of minor frames truncated to %d"},
    {189,
     "PCM format too big. This program only allows up to %d words per minor frame. Minor "
     "frame length truncated to %d."},
    {190,
     "Unable to allocate memory for pcm format data structure. Error requesting memory "
     "for %d minor frame words."},
    {191,
     "Async %s definition found without a data link name defined. Unable to locate '%s%s' "
     "command in TMATS file. A default data link name has been created for this format "
     "definition."},
    {192,
     "Illegal location definition found for async %s format definition #%d (%s). "
     "According to the definition, this format is suppercommutated, but an invalid "
     "location definition type (%s%s) field was found. This stream definition will not be "
     "processed."},
    {193,
     "Async %s Format definition #%d (%s) missing interval field (%s%s). This stream "
     "definition will not be processed."},
    {194,
     "Unable to locate '%s%s' definition in TMATS file. Async %s definition #%d ('%s') "
     "will not be processed."},
    {195,
     "Invalid Async %s Format location definition found. A Frame Word Position definition "
     "was out of range (frame word position #%d). Async stream definition #%d ('%s') will "
     "not be processed."},
    {196,
     "Invalid Async %s Format location definition found. Frame Word Position %d is NOT "
     "defined as a minor word location. Async stream definition #%d ('%s') will not be "
     "processed."},
    {197,
     "Unable to assign Async %s format to frame word position #%d (start frame:%d frame "
     "interval:%d end frame:%d). This stream definition will not be processed."},
    {198,
     "FSP had an invalid length. The TMATS file (MF4) command indicated that the FSP was "
     "%d bits long, yet the actual FSP found was %d bits long. This value has been "
     "corrected."},
    {199,
     "ID Counter Length field (%s%s) in TMATS file missing. Setting ID Counter Length "
     "value to: %s"},
    {200,
     "Unable to locate ID Counter Type field (%s%s) in TMATS file. Setting ID counter "
     "type to 'ID'"},
    {201,
     "Error: ID Counter '%s'. Invalid %s frame field (%s%s) found in TMATS file. Value "
     "found: '%s'. This value must be a number between %d and %d. Setting to default "
     "value: %d"},
    {202,
     "ID Counter Warning: Unable to locate ID Counter Name field (%s%s) in TMATS file for "
     "ID counter definition #%d. KAVU will generate the name '%s' for this ID counter"},
    {203,
     "ERROR: Partial ID Counter definitions were found in this TMATS file. This TMATS "
     "file is supposed to have %d ID Counters defined, but only %d will be processed."},
    {204,
     "ID Counter Error: Error reading ID Counter definition for ID counter '%s' (TMATS "
     "command '%s%s'). This name is already defined as an ID counter. This ID counter "
     "definition, and any subframes that reference it will be ignored."},
    {205,
     "Subframe Error: Unable to initialize subframe '%s' (TMATS command '%s%s'). This "
     "name already exists. This subframe definition and any measurements assigned to it "
     "will not be processed."},
    {206,
     "Invalid Frame Sync Pattern field found in TMATS file (%sMF5). Value found: '%s'. "
     "The Frame Sync Pattern must be a string containing only 1's and 0's. This "
     "definition will be ignored."},
    {207,
     "Invalid Word Length field (%s%s) found in TMATS file. Value found: %d. This is an "
     "invalid word length for an Async Embedded Stream definition. This value is being "
     "changed to %d."},
    {208,
     "Subframe Error: Unable to locate 'Subframe Name' field in TMATS file (%s%s). "
     "Setting subframe name to: 'SF#%d'"},
    {209,
     "Invalid 'End Value' command (%s%s) found in TMATS file for ID counter '%s'. Value "
     "found: %s. This value being changed to %d."},
    {210,
     "Error: ID Counter '%s'. An invalid MSB Start Bit field (%s%s) found in TMATS file. "
     "Value found: '%s'. This value must be greater than or equal to 1. Reference: IRIG "
     "106, Chapter 4. Default value of 1 will be used."},
    {211,
     "Unable to add subframe '%s' to frame word position %d. This frame word position is "
     "defined as an ID Counter."},
    {212,
     "Warning: Subframe '%s' was defined with a depth of '%d'. This is illogical. The "
     "depth has been changed to %d. This may produce undesirable results"},
    {213,
     "Warning: Subframe '%s' was defined with no depth description. The depth has been "
     "changed to %d"},
    {214,
     "Error: Invalid value found in the definition of async embedded format '%s'. %s. "
     "TMATS command read: %s%s:%d. This value has been changed to %d."},
    {215,
     "Error: An invalid number of Async Data Merge definitions was found. KAVU-9 can only "
     "support a maximum of %d async embdedded or async data merge stream definitions."},
    {216,
     "You must enter a number between 1 and 256.\n\n(Reference IRIG 106 paragraph: "
     "4.3.2.2.1)"},
    {217,
     "This is a 1553 format. The number of bits per minor frame must be a value between "
     "3072 and 6144."},
    {218, "Unable to detect PCM Format Type"},
    {219,
     "You have selected an illegal word length. Word lengths for Class One PCM Streams "
     "must be between 4 and %d bits.\n\n(Reference IRIG 106 paragraph: 4.3.1.1)"},
    {220,
     "You have selected an illegal word length. Word lengths for 1553 streams must be 24 "
     "bits.\n\n(Reference IRIG 106 paragraph: 8.4.1)"},
    {221,
     "PCM stream '%s' was identified as a 'Class 1' stream, but it contains 'Class 2' "
     "attributes. This stream contains %s, which is a Class 2 attribute. The 'Type "
     "Format' attribute has been changed to 'Class 2'"},
    {222,
     "This is a 1553 format. The number of words per minor frame must be a value between "
     "128 and 256."},
    {223,
     "Class One PCM streams can only contain a maximum of 1024 words per minor frame.\n\n"
     "(Reference IRIG 106 paragraph: 4.3.2.1.1)"},
    {224,
     "The PCM format minor frame word length is too large for this version of KAVU-9 to "
     "accept. Operation aborted."},
    {225, "Unable to create PCM display window. Operation Aborted"},
    {226,
     "This feature will create basic measurement definitions to each unused PCM "
     "measurement slot in this PCM format. Each measurement generated will have an unique "
     "name. This operation can not be undone.\n\nProceed?"},
    {227, "Operation complete\n%d new measurement definitions were created."},
    {228,
     "You Must enter a number between 1 and %d. In addition, you cannot move these Frame "
     "Word Positions into the same area they are being moved from."},
    {229, "Unable to locate %s by this name."},
    {230, "This is the Frame Sync Pattern. No measurements can be assigned."},
    {231,
     "This Frame Word Position already contains measurements. Unable to create new "
     "Subframe definition at this location."},
    {232, "Invalid Bitmask entered. The Bitmask value will be changed to 'FW' (Full Word)"},
    {233,
     "The 'Create Subframe' function has been disabled, because you have requested that "
     "KAVU-9 only generate measurements using the 'Word/Frame' method, without generating "
     "TMATS subframe definitions. You will be able to create new ID counters. This "
     "setting can be changed by changing the 'Measurement Definition Options' in the "
     "Options menu.\n\nPress OK to continue"},
    {234,
     "Unable to locate Async Format starting Frame Word Position. Could not locate any "
     "Frame Word Position that is assigned to Async Format '%s'. KAVU internal error."},
    {235,
     "Unable to locate 'Every Location' Async Format Frame Word Position. Could not "
     "locate the Frame Word Position for position #%d (%d total number of locations) of "
     "Async Format '%s'.  KAVU internal error."},
    {236,
     "Invalid Frame Word Position found. (Frame Word Position: %d Interval: %d number of "
     "locations: %d) This Frame Word Position was not found to be part of this Async "
     "Format '%s'. KAVU internal error."},
    {237,
     "Number of measurement lists (%sML\\N) found was %d.\n\nRe-setting to default value "
     "of 1."},
    {238,
     "Unable to locate NUMBER OF MEASUREMENT LISTS (ML\\N) definition in measurement "
     "definition section. Setting default to 1."},
    {239,
     "Unable to locate Measurement List Name for definition #%d. Default name "
     "'Measurement List #%d' will be used."},
    {240,
     "Unable to locate NUMBER OF MEASURANDS (MN\\N) definition in measurement definition "
     "section. No measurement information will be loaded."},
    {241,
     "Could not locate '%s%s' measurement location type definition for measurement '%s'.\n"
     "\nSet this measurement's location type to %s?"},
    {242,
     "Unable to locate minor frame definition (%s%s) in Measurement Section for "
     "measurement '%s'.\n\nThis measurement definition will be ignored."},
    {243,
     "Unable to locate subframe definition for measurement %s.\nSubframe name (%s) not "
     "defined in PCM Format Section of TMATS file.\n\nLast line read: %s%s \n\n"
     "Measurement definition ignored."},
    {244,
     "Illegal value found in TMATS file (%s%s) for subframe measurement definition '%s'. "
     "Location in subframe found was %d. Starting subframe number cannot be lower than 1."
     "\n\nSet this value to 1?"},
    {245,
     "Illegal value found in TMATS file (%s%s) for subframe measurement definition '%s'. "
     "Location in subframe found was %d. Subframe is only %d words deep. Set this value "
     "to %d?"},
    {246, "Unable to determine number of locations for Minor Frame Supercom '%s'"},
    {247, "Unable to locate Minor Frame Supercom Interval Definition (%s%s) for measurement: %s"},
    {248, "Unable to determine interval for Minor Frame Supercom '%s'"},
    {249, "Unable to locate Minor Frame Supercom Every Location Definition (%s)"},
    {250, "Unable to determine number of locations for Subframe Supercom '%s'"},
    {251,
     "Error processing measurement: %s. Unable to locate Subframe Supercom Interval "
     "Definition (%s%s)"},
    {252, "Unable to determine interval of Subframe Supercom '%s'"},
    {253,
     "Unable to locate Subframe Supercom 'EVERY LOCATION' definition for measurement "
     "'%s'. '%s%s' field not found in TMATS file. This definition will be ignored."},
    {254,
     "Could not locate NUMBER OF FRAGMENTS definition (%s%s) for measurement '%s'. This "
     "definition will be ignored."},
    {255,
     "Unable to locate Minor Frame Fragmented Interval definition (%s%s) for measurement: "
     "%s"},
    {256, "Unable to determine interval for Minor Frame Fragmented measurement: '%s'"},
    {257,
     "Unable to locate Minor Frame Fragmented word definition for measurement %s. '%s%s' "
     "field missing in TMATS file."},
    {258,
     "Could not locate NUMBER OF FRAGMENTS definition (%s%s) for measurement '%s'. This "
     "definition will be ignored."},
    {259,
     "Could not locate NUMBER OF SUBFRAMES definition (%s%s) for measurement '%s'. This "
     "definition will be ignored."},
    {260, "Unable to locate subframe definition for %s. This definition will be ignored."},
    {261,
     "Unable to locate Subframe Fragmented Interval Definition (%s%s) command, for "
     "Subframe Fragmented measurement '%s'"},
    {262, "Unable to determine interval for Subframe Fragmented '%s'"},
    {263,
     "Unable to locate fragment number (%s%s) command in TMATS file for measurement '%s'. "
     "This fragment definition will not be processed."},
    {264,
     "Unable to determine measurement location type for measurement '%s'. This "
     "measurement will not be processed. Illegal TMATS string found: <%s%s:%s;>"},
    {265, "Unable to open measurement comment file. Measurement section comments will be lost."},
    {266, "Unable to display PCM Format Information"},
    {267, "Unable to allocate memory for measurement data structure. Operation aborted."},
    {268, "Unable to delete measurement data structure for Frame Word Position %d"},
    {269,
     "Unable to locate subframe %s position #%d. Subframe Supercom Interval measurement "
     "%s not initialized."},
    {270,
     "Subframe %s contains only %d word positions. Unable to initialize requested number "
     "of measurements locations. Measurement '%s' at location #%d will not be processed."},
    {271,
     "Error initalizing measurement '%s' assigned to subframe '%s'. No measurement "
     "defined at Frame Word Position: %d Frame Number: %d"},
    {272,
     "Unable to locate position #%d of subframe %s. This subframe has %d positions "
     "(numbered 1 to %d). Subframe Supercom Every Location measurement %s can not be "
     "defined at this position."},
    {273,
     "Subframe %s is only %d words deep. Unable to initialize requested number of "
     "measurements"},
    {274,
     "Measurement '%s' is defined as a fragmented measurement, but not every fragment was "
     "defined. The following fragments were not defined: %s. This measurement may not be "
     "described properly."},
    {275,
     "Unable to initialize measurement information for measurement %s in TMATS file. "
     "Measurement %s at Frame Word Position:%d Frame Number:%d is already defined. The "
     "definition for %s will be ignored."},
    {276,
     "Illegal Frame Word Position definition for measurement '%s' at Frame Word "
     "Position:%d Frame Number:%d.\n\nThis PCM format is defined with %d maximum words "
     "per minor frame."},
    {277,
     "Illegal measurement definition. Measurement '%s' is defined as a %s measurement, "
     "but Frame Word Position %d is defined as a %s. This definition will be ignored."},
    {278,
     "Could not locate measurement name field (%s%s) in TMATS file. This measurement "
     "definition will be ignored."},
    {279,
     "ERROR reading TMATS command (%s%s:%s). Unable to place SFFR measurement '%s' in "
     "location #%d of subframe '%s'.\n%s"},
    {280,
     "%s Fragmented measurement '%s' was defined with a reconstructed word length of %d, "
     "but %d bits were defined in the bit masks of each fragment of this measurement. It "
     "is possible that this measurement was not completely or properly defined."},
    {281,
     "Error reading TMATS command (%s%s). Measurement '%s' is already defined. This "
     "second definition will be ignored."},
    {282,
     "Error reading TMATS command (%s%s). Another fragment for SFFR measurement '%s' is "
     "defined in another frame at frame word position %d. This is in violation of IRIG "
     "106, Chapter 4 standards. This fragment definition will be ignored."},
    {283,
     "Error reading TMATS command (%s%s:%s). Measurement '%s' can not be defined. The "
     "'Word/Frame' Method of describing measurement locations is only available on TMATS "
     "files written to 106-04 and later specifications. This TMATS file is a 106-%2.2d "
     "file."},
    {284,
     "Error reading TMATS definition for measurement '%s'. Unable to locate the '%s' "
     "TMATS command (%s%s). This measurement will not be processed."},
    {285,
     "Unable to define measurement '%s'. Measurements defined using the 'Word/Frame' "
     "method, can not be assigned to supercommutated subframes. Frame word position %d is "
     "part of supercommutated subframe '%s'."},
    {286,
     "Unable to define measurement '%s' at frame word position %d, frame number %d.  "
     "'Start Frame' and 'End Frame' values must be between 1 and %d and 'End Frame' can "
     "not be less than 'Start Frame'."},
    {287,
     "Unable to define measurement '%s' at frame word position %d. This frame word "
     "position is defined as an ID Counter. Measurements assigned to the ID Counter, "
     "using the Word/Frame method of defining measurement must have the following values: "
     "'Word Increment' must be 0. 'Frame Position' and 'Frame Interval' must equal 1."},
    {288,
     "Warning: The TMATS D-section 'Word/Frame' definitions for measurement '%s' were "
     "invalid. Location #%d has invalid 'Fragment Number' values defined for fragment "
     "definition #%d. These values must be sequential numbers, beginning at 1. The values "
     "found were either not sequentiaal, or duplicate values were found. All values have "
     "been corrected. Please verify that this measurement continues to be defined as you "
     "expected."},
    {289,
     "Warning: The definition for Subframe Fragmented measurement '%s' may be in error. "
     "This measurement was defined using both the 'Interval' and 'Every Location' method "
     "for describing measurements, which was not the intent of TMATS."},
    {290,
     "Error defining measurement '%s'. This measurement is defined as having %d "
     "fragments, yet a fragment definition for 'fragment #%d' was found. This invalid "
     "definition will be ignored."},
    {291,
     "Warning: There was an error reading the bitmask field for fragment #%d of "
     "measurement '%s'. One of the bitmask values found, was different than the previous "
     "value for the same fragment. The bitmask value for this invalid definition has been "
     "changed, to match the first value found for this fragment."},
    {292,
     "Unable to define measurement '%s'. End word (%d) can not be less than start word "
     "(%d)."},
    {293,
     "Unable to define measurement '%s'. When the 'End %s' value is greater than the "
     "'Start %s' value, '%s Increment' must be a number greater than zero."},
    {294,
     "Warning: The 'Word Length' value (MWL), for measurement %s was wrong, based upon "
     "the number of bits found in the bitmasks for each fragment. The Word Length value "
     "for this measurement has been changed to %d."},
    {295, "Unable to locate other definitions for measurement '%s'."},
    {296, "Unable to locate subframe definition for measurement %s."},
    {297, "Illegal Measurement Location Type found for measurement: '%s'"},
    {298, "Unable to create Data source file for Data Source #%d (%s)"},
    {299,
     "You are about to rename this data source from '%s' to '%s'. This change will be "
     "made everywhere this data source name is referenced in this TMATS file,\n\nDo you "
     "wish to continue?"},
    {300, "Unable to determine Baseband Signal Type. Setting default to PCM."},
    {301, "Unable to determine Baseband Signal Type. This field will be ignored."},
    {302,
     "Too many data link names found in the Multiplex section of this file. Operation "
     "aborted."},
    {303, "Unable to create new %s link. Too many data sources are defined."},
    {304,
     "A %s definition was found with an unresolved data link name (%s). This means there "
     "was no corresponding RF Data Source or Multiplex/Modulation section found with this "
     "data link name. Do you want KAVU to create one?\n\nIf you say 'yes', a new RF Data "
     "Source, and a new Multiplex/Modulation definition will be created for this data "
     "link name. If you say 'no', no linkages will be created."},
    {305,
     "Too many data link names defined! Unable to add new data link definition (%s), "
     "which was found in the %s definition."},
    {306, "This %s name already exists. Please choose another name."},
    {307, "Unable to open Multiplex Definition File. Operation Aborted"},
    {308,
     "No Data Links were defined yet. Please define one or more Data Links in this TMATS "
     "file."},
    {309, "Unable to open Data Source Definition File. Operation Aborted"},
    {310,
     "Recorder/Reproducer Data Source definition not found. Creating new data source "
     "definition."},
    {311, "Unable to open Data Source Definition File. Operation Aborted"},
    {312,
     "There are currently %d Data Tracks defined. Please enter a number greater than or "
     "equal to %d, otherwise, please delete one or more Data Track Definitions if you "
     "want to lower this number."},
    {313, "Unable to %s %s"},
    {314, "Unable to read %s.\n\nMeasurement Information will not be saved."},
    {315,
     "ERROR reading Data Conversion command in TMATS file (Measurement name: %s).\n\nThe "
     "TMATS command 'C-%d\\%s:%s' is too long. This field can not be longer than %d "
     "characters. This command has been truncated."},
    {316, "Illegal number of Pair Set definitions found for measurement %s. Truncated to %d."},
    {317,
     "ERROR: Duplicate measurement found in 'Data Conversion' section. Measurement '%s' "
     "was defined more than once. This duplicate definition will be ignored and removed."},
    {318,
     "There was an error reading the Data Conversion command 'C-%d\\%s:%s'. The "
     "measurement name is too long. This measurement name has been truncated to '%s'."},
    {319,
     "Invalid Bus Number found.\n\nTMATS command found: %s:%s\nThis field must be a "
     "binary string in the range 000 through 111\n\nThis entry will be ignored."},
    {320, "Please enter a valid BUS NAME."},
    {321, "This %s number or name is already defined. Please select another value."},
    {322, "Unable to open 1553 Definition File. Operation Aborted"},
    {323, "Unable to locate subframe information for this measurement!"},
    {324, "Unable to allocate temporary memory for comment field. Comment not available."},
    {325, "Unable to open measurement comment file. Comment not available"},
    {326, "Please enter a measurement name first."},
    {327, "You must enter LOCATION TYPE before exiting."},
    {328, "Please select Supercom/Fragment location type."},
    {329, "Couldn't find measurement structure in EDIT WORD"},
    {330,
     "Unable to save measurements as defined. Frame word position %d is NOT defined as a "
     "minor word."},
    {331,
     "Unable to save measurements as defined. There is no measurement defined at frame "
     "word position %d, frame number %d."},
    {332, "Unable to allocate temporary memory for comment field. Comment not saved."},
    {333, "Could not save comment field. Unable to open measurement comment file."},
    {334,
     "This measurement name already in use at Frame Word Position: %d Frame Number: %d\n\n"
     "Please select another name."},
    {335,
     "Invalid Fragment definition. More than one fragment for this measurement is defined "
     "in different frames of the same frame word position. This is in violation of IRIG "
     "106, Chapter 4 standards. Each fragment for a measurement should be contained "
     "within the same minor frame."},
    {336,
     "Unable to save measurement information. Reconstructed Fragment Word Length value is "
     "missing."},
    {337,
     "Unable to save measurement. 'Number Of Locations' and 'Interval' must both be a "
     "number greater than zero."},
    {338,
     "You can not define a measurement in this location using the 'Word/Frame' method. "
     "This Frame Word Position is defined as a supercomutated subframe."},
    {339,
     "This measurement name already in use in a Tagged Data definition.\n\nPlease select "
     "another name."},
    {340,
     "There are no measurements defined in this PCM stream. Measurement filter/overwrite "
     "settings can not be defined until there are measurements defined in this PCM stream."},
    {341,
     "Unable to save Subframe definition. Frame Word Position %d is defined as a MINOR "
     "WORD, and already has measurement(s) defined."},
    {342, "Unable to locate first subframe definition"},
    {343,
     "Error with '1st Word/Interval' definition for frame word position %d. This Frame "
     "Word Position is larger than the PCM format defined."},
    {344,
     "Error with '1st Word/Interval' definition for frame word position %d. This Frame "
     "Word Position is assigned to another subframe."},
    {345,
     "Error with '1st Word/Interval' definition. Frame Word Position #%d not found in "
     "list. You cannot remove this Frame Word Position from the definition."},
    {346, "Illegal 'Every Location' definition found. Values must range from 1 to %d"},
    {347,
     "Error with 'Every Location' definition for frame word position %d. This Frame Word "
     "Position is assigned to another subframe."},
    {348,
     "Error with 'Every Location' definition. Frame Word Position #%d not found in list. "
     "You cannot remove this Frame Word Position from the definition."},
    {349, "You must specify a depth greater than zero."},
    {350, "This subframe depfinition is too deep. The maximum depth for a subframe is %d."},
    {351,
     "Illegal subframe depth value entered. Value must be evenly divisible by depth of ID "
     "counter %s, which has a depth of %d"},
    {352,
     "PCM format too big. This program only allows %d subframe definitions for each ID "
     "Counter."},
    {353, "You must enter a name for this subframe."},
    {354, "Invalid subframe name entered. This name already exists. Please select a unique name"},
    {355,
     "Before creating a Subframe or subcommutated measurement definition, there must be "
     "at least one ID Counter defined. Please define an ID counter first"},
    {356,
     "This subframe can not be converted into a supercomutated subframe. There are "
     "measurements in this subframe that are defined with the 'Word/Frame' method. "
     "Measurements defined with the Word/Frame method, can not be defined in "
     "supercomutated subframes."},
    {357,
     "You are attempting to create a subcommutated measurement, but no ID Counter has "
     "been defined yet. Would you like to create an ID Counter now?\n\n(If you answer no, "
     "this measurement can not be defined at this time"},
    {358,
     "Error reading measurement '%s'. This measurement is being defined as a "
     "subcommutated measurement (one that does not appear in every minor frame). No ID "
     "counter has been defined for this stream. Would you like to manually define one now?"
     "\n\n(If you say yes, you will be prompted to enter ID counter information. if you "
     "say no, this measurement will be ignored)"},
    {359, "Could not locate ID Counter definition"},
    {360, "You cannot delete this ID Counter. %s references this ID Counter."},
    {361, "You must enter a name for this ID COUNTER."},
    {362,
     "The 'ID Counter Length' of this ID COUNTER is too large. You may not enter a number "
     "greater than %d."},
    {363,
     "The %s subframe number this ID COUNTER is invalid.\n\nThis value cannot be less "
     "than 1 or greater than %d."},
    {364,
     "Invalid start/end subframe numbers specified. Ending subframe number must be "
     "greater than starting subframe number."},
    {365,
     "Invalid ID Counter name entered. Another ID counter at frame word position #%d has "
     "the same name"},
    {366,
     "Invalid ID Counter MSB Start Bit value. This value must be greater than or equal to "
     "1 (Reference: IRIG 106, Chapter 4)."},
    {367, "Please enter a Data Link Name."},
    {368, "Please select a location type before exiting."},
    {369, "Please select an INTERVAL before exiting."},
    {370, "Unable to locate Async Stream Definition"},
    {371, "Invalid Bitmask entered. You must enter a string of 1's and 0's only."},
    {372,
     "Invalid Bitmask entered. The word length for this Frame Word Position is %d.  You "
     "have entered a bitmask that is %d characters in length.  This bitmask can not be "
     "any longer than %d characters."},
    {373, "Please select another Frame Word Position. This location was already defined."},
    {374, "This Data Link name already exists. Please select another name."},
    {375,
     "The Data Link name is already assigned to another async format. Please select a "
     "different Data Link Name"},
    {376,
     "Invalid terminal address entered. This string must be made up of the characters "
     "'0', '1', or 'X'"},
    {377, "Remote Terminal Address cannot be 31. Please select another Remote Terminal."},
    {378,
     "Sub Terminal Address must be set to either 0 or 31 for Tx Mode, Rx Mode and "
     "Broadcast Mode commands.\n\nPlease select another Sub Terminal Address."},
    {379, "Sub Terminal Address cannot be 0 or 31. Please select another Sub Terminal."},
    {380, "Remote Terminal Address has been changed to 31"},
    {381,
     "Sub Terminal Address must be set to either 0 or 31 for Tx Mode, Rx Mode and "
     "Broadcast Mode commands."},
    {382, "T/R Mode has been changed to %s"},
    {383, "Please select a %s Terminal before exiting."},
    {384, "Please enter a Data Word Count before exiting."},
    {385,
     "Remote Terminal Address cannot be 31 for a RT/RT Message.\n\nPlease select another "
     "Remote Terminal."},
    {386,
     "Remote Terminal Address must be 31 for a RT/RT Broadcast.\n\nRemote Terminal "
     "Address has been changed to 31."},
    {387,
     "Sub Terminal Address cannot be 0 or 31 for a RT/RT Message or RT/RT Broadcast.\n\n"
     "Please select another Sub Terminal."},
    {388, "Please select a Word Number before exiting."},
    {389, "Please select a Bit Mask before exiting."},
    {390, "Please select a Transfer Order before exiting."},
    {391, "Please select a Fragment Position before exiting."},
    {392,
     "Invalid 'Command Word Entry' value entered. This value must be a valid hexidecimal "
     "string (0-9, A-F)"},
    {393,
     "Load terminal default definitions:\n\nThis function will add the following "
     "terminals:\n\nSub Terminals:\n\n%s\nRemote Terminals:\n\n%s\nContinue?"},
    {394,
     "Save defined terminals as defaults:\n\nDo you wish to save the currently defined "
     "remote terminals and sub terminals, as defaults?"},
    {395, "ERROR: Unable to locate H\\%s command in TMATS."},
    {396,
     "ERROR: Invalid command found in TMATS.\nCommand: H\\%s Value: %s. This value must "
     "be ANALOG or DIGITAL"},
    {397,
     "ERROR: Measurement: '%s'. Channel number command (H\\%s) in TMATS file was %s. This "
     "value must be between 0 and 256. Setting to default value '0'"},
    {398,
     "ERROR: Measurement: '%s'. The %s command (H\\%s) in the TMATS file is %s. This "
     "value must be a number between 1 and 8. Using default value of '1'"},
    {400,
     "ERROR: Invalid character found in string. Do not place any spaces in the string you "
     "enter."},
    {401,
     "ERROR: Invalid 'Baud Rate' line found in TMATS file, and will be ignored.\n\nKAVU-9 "
     "expects each line to be in the following format:\n'[n1] -> [baudrate1] BAUD [n2] -> "
     "[baudrate2] BAUD'\n\nLine found:\n'%s'"},
    {402,
     "You are not allowed to use a semi-colon (;) as part of any field. Please remove the "
     "semi-colon."},
    {403, "Error creating report\n\n%s"},
    {404,
     "Unable able to detect '%s' option. Please set this option using the 'Report "
     "Options' dialog"},
    {405,
     "Invalid 'Number Of Bits' value entered. This value must be an integer number "
     "greater than zero."},
    {406, "Printer Error %s"},
    {407, "Unable to read '%s' temporary file (%s).\n\nOperation Aborted."},
    {408,
     "WARNING: An invalid field was found in line %d of the Measurement Database "
     "(Measurement '%s'). The '%s' field (field #%d) value is too long.\n\nValue found: "
     "'%s'\n\nThis field can not be any longer than %d characters."},
    {409,
     "WARNING: An invalid field was found in line %d of the Measurement Database "
     "(Measurement '%s'). The '%s' field (field #%d) value is not a valid TMATS command.\n"
     "\nValue found: '%s'\n\nAccording to the TMATS specification, this field must be one "
     "of the following values: %s."},
    {410,
     "You are about to delete all entries in the measurement database.\n\nDo you wish to "
     "continue?"},
    {411,
     "Unable to load all measurement names from database. Operation was cancelled by the "
     "user."},
    {412,
     "ERROR:  Unable to add 'Root Word' or 'Children' definitions for '%s'. KAVU-9 can "
     "only automatically add measurements from the database for MINOR FRAME or SUBFRAME "
     "measurements. KAVU-9 cannot automatically add definitions for Supercommutated, or "
     "fragmented measurements."},
    {413,
     "WARNING: An invalid field was found in line %d of the Measurement Database "
     "(Measurement '%s'). This name was previously defined."},
    {414, "ERROR: Unable to load all measurement names into listbox."},
    {415,
     "Update complete.\n\nDatabase in use: %s\n\n%d measurements were %s.\n%d new EU "
     "definitions were created for those measurements that didn't have previous "
     "definitions."},
    {416,
     "WARNING: Line #%d of measurement database (measurement '%s') contains %d fields. "
     "This version of KAVU-9 expects %d fields in each database entry."},
    {417,
     "Unable to add measurements. This Measurement Database is a Version 1 database, "
     "which does not contain the extra 1553 fields needed to add measurements to this "
     "stream."},
    {418,
     "This operation will add new 1553 measurements from the Measurement Database. If you "
     "select 'Yes', this function will go through the contents of the measurement "
     "database, and will add any and all measurements that are not yet defined.\n\n"
     "Continue?"},
    {419, "Unable to parse import file. Could not locate any delimiters in the import file."},
    {420,
     "Warning: There are only %d fields found in the file you are trying to convert from, "
     "but you have requested that the following field(s) be converted into the KAVU "
     "database you are creating:\n\n%s\nIf you continue, these field(s) will be ignored.\n"
     "\nContinue?"},
    {421,
     "Error: Entry #%d in the list has a starting column of '%d', but no Field Size was "
     "specified. Please enter a valid Field Size before converting."},
    {422,
     "Warning: Some lines from the Import File were not converted, because you requested "
     "fields that past the end of the line."},
    {423,
     "Error: Unable to convert this Dbase file into an KAVU Measurement Database. '%s' "
     "was not found in the Dbase file."},
    {424, "Conversion complete. %d measurements were converted."},
    {425,
     "Error: Unable to continue conversion. Kavu Measurement Database Field #1 "
     "(Measurement Name) was not defined, or could not be found in the import file. "
     "Measurement Name is a required field in the Kavu Database, and must be defined."},
    {426,
     "Error Reading Measurement Database: Line #%d of the KAVU Measurement Database is "
     "being ignored, because the first field does not contain a measurement name."},
    {427,
     "Because there were errors found in the database, these changes have not been "
     "permanently saved. Please correct the errors first, before attempting to save the "
     "database."},
    {428,
     "ERROR: Unable to open measurement database %s\n\nMeasurement database functions "
     "have been disabled"},
    {429, "ERROR: The measurement database '%s' does not exist. Would you like to create it?"},
    {430, "ERROR: The measurement database filename has not been defined yet."},
    {431,
     "'Sample Rate' field was not found in the TMATS file for measurement '%s'. Based "
     "upon the PCM stream defined, the sample rate calculated for this measurement is %s. "
     "Sample rate field has been added."},
    {432,
     "Invalid 'Sample Rate' value was found in the TMATS file for measurement '%s'. "
     "Sample rate found in TMATS file was %s. Based upon the PCM stream defined, the "
     "sample rate calculated for this measurement is %s. Sample rate has been changed."},
    {433,
     "Warning: Operation canceled before all sample rates were checked. Some sample rates "
     "were not calculated."},
    {434,
     "You cannot change the Sample Rate. This value is automatically calculated by "
     "KAVU-9. To manually change sample rates, change the 'Measurement Sample Rates' "
     "setting in the 'Options' menu.\n\nIf you just created this measurement, or just "
     "changed the number of occurrences of this measurement in the previous screen "
     "without first saving the measurement, this sample rate value will NOT reflect those "
     "changes. The correct sample rate will be recalculated once this measurement has "
     "been saved."},
    {435, "There are no other measurements that have EU conversions defined"},
    {436,
     "Do you want to rename the EU definition for this measurement?\n\nNote: This will "
     "only change the name in the TMATS 'C' section (EU Attributes) for this measurement. "
     "It will not change the name in any defined stream"},
    {437,
     "Do you wish to save %s values as defaults, to be used whenever a new measurement is "
     "created?\n\n%s"},
    {438,
     "Items have changed. If you don't save this measurement before printing the report, "
     "the latest changes you made won't be reflected in the report. Do you want to save "
     "this measurement now?"},
    {439,
     "Invalid field in Frame Sync Pattern. The Frame Sync Pattern must be a string of 1's "
     "and 0's, or a valid hexidecimal string"},
    {440, "ERROR: Frame Sync Pattern can not be any longer than %d characters"},
    {441,
     "The current TMATS file is a 106-%2.2d file.\n\nThis TMATS file is already open and "
     "changed. Please save the current TMATS file, or close the TMATS file before "
     "changing the version number."},
    {442,
     "Invalid Version Number found in TMATS file (G\\106:%s;). Setting TMATS version to "
     "the default value (106-%2.2d)."},
    {443,
     "According to the 'G\\106' command found in the TMATS file, this is a 106-%2.2d "
     "file. This version of KAVU-9 does not support this version. KAVU-9 will treat this "
     "file as a 106-%2.2d file."},
    {444, "This TMATS file was successfully converted from 106-%2.2d to 106-%2.2d"},
    {445,
     "This feature is not available. This feature was first implemented with the release "
     "of IRIG 106-%2.2d. The TMATS file being edited now, is a 106-%2.2d file."},
    {447, "You have entered an invalid date field. Please re-enter this field, in the form: %s"},
    {448, "Unable to communicate with AutoTelem. AutoTelem functions will be disabled"},
    {449,
     "There are already measurements defined in the listbox. If you continue, these "
     "definitions will be lost.\n\nContinue?"},
    {450,
     "Invalid %s value found for measurement '%s'. Value found: '%s'. This value is being "
     "set to %s"},
    {451,
     "Invalid Bit Mask value found for measurement '%s'. Value found: '%s'. Bit mask "
     "fields can only be a string of ones and zeros, or the characters 'FW'. This value "
     "is being set to 'Full Word'"},
    {452,
     "Invalid '%s' value found in TMATS file while reading S-Group definition for source "
     "packet #%d. Expected to read a binary string, made up of only 0's or 1's. This "
     "value is being set to '%s'"},
    {453, "Do you want to create a new %s definition?"},
    {454, "Unable to locate the %s command (%s%s) in this TMATS file. Creating default value"},
    {455, "Measurement '%s' is already being used in stream #%s. Please select another name."},
    {456,
     "You have requested that KAVU report any measurement names that appear in more than "
     "one stream. This TMATS file has measurements with the same name, in different "
     "streams.\n\nDuplicate measurement name checking has been disabled for this TMATS "
     "file."},
    {457,
     "Warning: You are about to %s the EU conversions for measurement '%s'. This "
     "measurement is defined in another stream. If you %s this measurement, the EU "
     "conversions for this measurement will also be %sd. This may affect the measurement "
     "EU conversions with the same name that are defined in other streams.\n\nIs it ok to "
     "%s this measurement's EU conversions?\n\n(Yes = %s, No = Do not alter existing EU "
     "conversions"},
    {458,
     "Warning: Some Data Source or Data Link names were already being used in this TMATS "
     "file. These names were changed, to make them unique.\n\nData %s '%s' name has been "
     "changed to '%s'"},
    {459,
     "The EU definitions for measurement '%s' were not imported, because EU definitions "
     "for a measurement with this same name already exists in the TMATS file you "
     "currently have open."},
    {460,
     "Unable to convert the following measurement to Word/Frame:\n\nMeasurement: '%s'\n"
     "Frame word position: %d\nFrame number: %d\nOriginal measurement location type: '%s'"},
    {461,
     "Warning: Before the conversion started, %d unique measurement locations were found "
     "in this PCM stream. After the conversion, %d were found. Some measurements may not "
     "have been completely converted."},
};

}  // namespace kavu
