import java.io.*;
import java.nio.charset.StandardCharsets;
import java.util.*;
import java.util.zip.GZIPInputStream;
import javax.xml.stream.*;
import org.eclipse.emf.common.util.*;
import org.eclipse.emf.ecore.*;
import org.eclipse.emf.ecore.resource.*;
import org.eclipse.emf.ecore.resource.impl.*;
import org.eclipse.emf.ecore.util.*;
import org.eclipse.emf.ecore.xmi.impl.*;

/**
 * Loads files by the metamodel of UML. Usage: CheckUml FOLDER FILE...
 *
 * For each file prints a line "FILE<tab>fault<tab>TEXT" for each fault, "FILE<tab>count<tab>METACLASS=NUMBER", and
 * of a file whose name says "hostile" "FILE<tab>text<tab>FEATURE<tab>VALUE" for each name, body and key of an
 * annotation, as hexadecimal digits of UTF-8.
 */
public class CheckUml {
    static void print(String file, String kind, String text) {
        System.out.println(file + "\t" + kind + "\t" + text.replace('\n', ' '));
    }

    public static void main(String[] arguments) throws Exception {
        System.setOut(new PrintStream(new BufferedOutputStream(new FileOutputStream(FileDescriptor.out)), false, "UTF-8"));
        ResourceSet set = metamodelIn(arguments[0]);
        for (String file : Arrays.asList(arguments).subList(1, arguments.length)) {
            check(set, file);
        }
        System.out.flush();
    }

    static ResourceSet metamodelIn(String folder) throws IOException {
        ResourceSet set = new ResourceSetImpl();
        Map<String, Object> factories = set.getResourceFactoryRegistry().getExtensionToFactoryMap();
        factories.put("ecore", new EcoreResourceFactoryImpl());
        factories.put("*", new XMIResourceFactoryImpl());
        set.getPackageRegistry().put(EcorePackage.eNS_URI, EcorePackage.eINSTANCE);
        Map<URI, URI> places = set.getURIConverter().getURIMap();
        places.put(URI.createURI("platform:/plugin/org.eclipse.uml2.types/model/Types.ecore"),
                   URI.createFileURI(folder + "/Types.ecore"));
        places.put(URI.createURI("platform:/plugin/org.eclipse.emf.ecore/model/Ecore.ecore"),
                   URI.createURI(EcorePackage.eNS_URI));
        places.put(URI.createURI("pathmap://UML_LIBRARIES/"), URI.createFileURI(folder + "/"));
        Resource metamodel = set.createResource(URI.createFileURI(folder + "/UML.ecore"));
        try (InputStream in = new GZIPInputStream(new FileInputStream(folder + "/UML.ecore.gz"))) {
            metamodel.load(in, null);
        }
        EPackage uml = (EPackage) metamodel.getContents().get(0);
        // Elements have annotations from a supertype in a file of Ecore that is not at hand.
        EClass element = (EClass) uml.getEClassifier("Element");
        element.getESuperTypes().clear();
        EReference annotations = EcoreFactory.eINSTANCE.createEReference();
        annotations.setName("eAnnotations");
        annotations.setEType(EcorePackage.Literals.EANNOTATION);
        annotations.setContainment(true);
        annotations.setUpperBound(-1);
        element.getEStructuralFeatures().add(annotations);
        EcoreUtil.resolveAll(set);
        set.getPackageRegistry().put(uml.getNsURI(), uml);
        return set;
    }

    static void check(ResourceSet set, String file) throws Exception {
        checkIds(file);
        Resource resource = set.createResource(URI.createFileURI(file));
        try {
            resource.load(null);
        } catch (Exception exception) {
            print(file, "fault", "cannot be loaded: " + exception.getMessage());
        }
        for (Resource.Diagnostic error : resource.getErrors()) {
            print(file, "fault", "line " + error.getLine() + ": " + error.getMessage());
        }
        for (EObject proxy : EcoreUtil.UnresolvedProxyCrossReferencer.find(resource).keySet()) {
            print(file, "fault", "refers to nothing: " + EcoreUtil.getURI(proxy));
        }
        Map<String, Integer> counts = new TreeMap<>();
        EObjectValidator validator = new EObjectValidator();
        for (Iterator<EObject> all = resource.getAllContents(); all.hasNext();) {
            EObject object = all.next();
            counts.merge(object.eClass().getName(), 1, Integer::sum);
            BasicDiagnostic found = new BasicDiagnostic();
            Map<Object, Object> context = new HashMap<>();
            validator.validate_EveryDataValueConforms(object, found, context);
            validator.validate_EveryReferenceIsContained(object, found, context);
            validator.validate_EveryBidirectionalReferenceIsPaired(object, found, context);
            validator.validate_UniqueID(object, found, context);
            for (Diagnostic diagnostic : found.getChildren()) {
                print(file, "fault", diagnostic.getMessage());
            }
            checkFeatures(file, object);
        }
        counts.forEach((name, count) -> print(file, "count", name + "=" + count));
        resource.unload();
    }

    /** EMF takes the last of two elements with one id without a word. */
    static void checkIds(String file) throws Exception {
        Set<String> ids = new HashSet<>();
        try (InputStream in = new FileInputStream(file)) {
            XMLStreamReader reader = XMLInputFactory.newInstance().createXMLStreamReader(in);
            while (reader.hasNext()) {
                if (reader.next() != XMLStreamConstants.START_ELEMENT) {
                    continue;
                }
                for (int i = 0; i < reader.getAttributeCount(); i++) {
                    boolean isId = reader.getAttributeLocalName(i).equals("id");
                    if (isId && !ids.add(reader.getAttributeValue(i))) {
                        print(file, "fault", "two elements with the id " + reader.getAttributeValue(i));
                    }
                }
            }
        }
    }

    static void checkFeatures(String file, EObject object) {
        for (EStructuralFeature feature : object.eClass().getEAllStructuralFeatures()) {
            String name = object.eClass().getName() + "." + feature.getName();
            if (feature.isDerived() || feature.isTransient()) {
                continue;
            }
            int count = feature.isMany() ? ((List<?>) object.eGet(feature)).size() : object.eGet(feature) == null ? 0 : 1;
            if (count < feature.getLowerBound()) {
                print(file, "fault", name + " has " + count + ", needs " + feature.getLowerBound());
            }
            boolean isText = Arrays.asList("name", "body", "key").contains(feature.getName());
            if (isText && count > 0 && file.contains("hostile")) {
                Object value = feature.isMany() ? ((List<?>) object.eGet(feature)).get(0) : object.eGet(feature);
                StringBuilder digits = new StringBuilder();
                for (byte one : value.toString().getBytes(StandardCharsets.UTF_8)) {
                    digits.append(String.format("%02x", one));
                }
                print(file, "text", name + "\t" + digits);
            }
        }
    }
}
