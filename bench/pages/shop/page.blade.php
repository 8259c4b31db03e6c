@include('shop.header')
<p class="path">
@foreach ($path as $step)
<a href="{!! $step['url'] !!}">{{ $step['title'] }}</a> /
@endforeach
</p>
<main>
<h1>{{ $title }}</h1>
<p>{!! $found !!} articles found</p>
<aside>
@foreach ($facets as $facet)
<fieldset><legend>{{ $facet['title'] }}</legend>
@foreach ($facet['values'] as $value)
<label><input type="checkbox" name="{!! rawurlencode($facet['title']) !!}" value="{!! rawurlencode($value['name']) !!}"> {{ $value['name'] }} ({!! $value['count'] !!})</label>
@endforeach
</fieldset>
@endforeach
</aside>
<ol class="products">
@foreach ($products as $product)
<li class="product" id="p{!! $product['id'] !!}">
@if ($product['badge'])<b class="badge">{!! $product['badge'] !!}</b>
@endif
<a class="picture" href="{!! $product['url'] !!}"><img src="{!! $product['image'] !!}" alt="{{ $product['name'] }}" width="320" height="320" loading="lazy"></a>
<h2><a href="{!! $product['url'] !!}">{{ $product['name'] }}</a></h2>
<p class="brand">by {{ $product['brand'] }}</p>
<p class="text">{{ $product['text'] }}</p>
<ul class="facts"><li>Article {!! $product['sku'] !!}</li><li>{!! $product['width'] !!} × {!! $product['height'] !!} cm, {!! $product['weight'] !!} kg</li><li>Made in {{ $product['origin'] }}</li><li><a href="{!! $product['url'] !!}#care">How to care for it</a></li></ul>
<p class="rating" title="{!! $product['rating'] !!} of 5"><meter min="0" max="5" value="{!! $product['rating'] !!}"></meter> {!! $product['votes'] !!} votes</p>
<p class="price">@if ($product['before'])<s>{!! $product['before'] !!} EUR</s> @endif<strong>{!! $product['price'] !!} EUR</strong></p>
@if ($product['stock'] === 'out')<p class="stock out">Back in three weeks</p>
@else<form action="/cart" method="post"><input type="hidden" name="id" value="{!! $product['id'] !!}"><button>Add to cart</button></form>
@endif
</li>
@endforeach
</ol>
</main>
@include('shop.footer')
