<h1>{!! $title !!}</h1>
<table>
<tr><th>Id</th><th>Number</th><th>Name</th><th>Category</th><th>Supplier</th><th>City</th><th>Note</th><th>Price</th><th>Weight</th><th>Stock</th></tr>
@foreach ($rows as $row)
<tr>
<td>{!! $row['id'] !!}</td><td>{!! $row['sku'] !!}</td><td>{{ $row['name'] }}</td><td>{{ $row['category'] }}</td><td>{{ $row['supplier'] }}</td>
<td>{{ $row['city'] }}</td><td>{{ $row['note'] }}</td><td>{!! $row['price'] !!}</td><td>{!! $row['weight'] !!}</td><td>{!! $row['stock'] !!}</td>
</tr>
@endforeach
</table>
